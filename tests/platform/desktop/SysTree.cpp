#include "platform/desktop/SysTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

void write(const QString& path, const QByteArray& text) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace

SysTree::SysTree() {
    QDir(path()).mkpath(QStringLiteral("dev/block"));
    QDir(path()).mkpath(QStringLiteral("class/block"));
}

void SysTree::addDisk(const QString& name, const QString& number, bool removable) {
    const QString folder = path() % u"/devices/pci0000:00/block/" % name;
    addDevice(name, number, folder);
    write(folder % u"/removable", removable ? "1\n" : "0\n");
    QDir(folder).mkpath(QStringLiteral("slaves"));
}

void SysTree::addPartition(const QString& disk, const QString& name, const QString& number) {
    const QString folder = deviceFolder(disk) % u'/' % name;
    addDevice(name, number, folder);
    write(folder % u"/partition", "1\n");
}

void SysTree::addStacked(const QString& name, const QString& number, const QStringList& slaves) {
    const QString folder = path() % u"/devices/virtual/block/" % name;
    addDevice(name, number, folder);
    write(folder % u"/removable", "0\n");
    QDir(folder).mkpath(QStringLiteral("slaves"));
    for (const QString& slave : slaves) {
        QFile::link(deviceFolder(slave), folder % u"/slaves/" % slave);
    }
}

void SysTree::setCardType(const QString& disk, const QString& type) {
    write(deviceFolder(disk) % u"/device/type", type.toLatin1() + '\n');
}

void SysTree::removeAttribute(const QString& disk) {
    QFile::remove(deviceFolder(disk) % u"/removable");
}

QString SysTree::deviceFolder(const QString& name) const {
    return QFileInfo(path() % u"/class/block/" % name).canonicalFilePath();
}

void SysTree::addDevice(const QString& name, const QString& number, const QString& folder) {
    QDir().mkpath(folder);
    QFile::link(folder, path() % u"/dev/block/" % number);
    QFile::link(folder, path() % u"/class/block/" % name);
}
