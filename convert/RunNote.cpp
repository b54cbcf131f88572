#include "convert/RunNote.h"

#include <QList>

namespace {

const QByteArray firstLine = QByteArrayLiteral("reelshift-run 1");
const QByteArray nothing = QByteArrayLiteral("nothing");

QByteArray fileText(const RunNote::File& file) {
    return QByteArray::number(file.device) + ' ' + QByteArray::number(file.inode) + ' ' +
           QByteArray::number(file.size) + ' ' + QByteArray::number(file.seconds) + ' ' +
           QByteArray::number(file.nanoseconds);
}

// Numbers as read are not checked further: whoever reads a note writes it anew and compares.
std::optional<RunNote::File> fileOf(const QByteArray& text) {
    const QList<QByteArray> numbers = text.split(' ');
    if (numbers.size() != 5)
        return std::nullopt;
    return RunNote::File{numbers[0].toULongLong(), numbers[1].toULongLong(),
                         numbers[2].toULongLong(), numbers[3].toLongLong(),
                         numbers[4].toLongLong()};
}

QByteArray pathText(const QByteArray& path) {
    return path.toPercentEncoding(QByteArrayLiteral("/"));
}

bool isPath(const QByteArray& path) {
    return path.startsWith('/') && !path.contains('\0');
}

/// The rest of a line that begins with that word; empty where it does not.
QByteArray field(const QByteArray& line, const char* word) {
    const QByteArray start = QByteArray(word) + ' ';
    return line.startsWith(start) ? line.mid(start.size()) : QByteArray();
}

} // namespace

QByteArray RunNote::text() const {
    return firstLine + "\nboot " + boot + "\nlaunched " + QByteArray::number(launched) +
           "\noutput " + pathText(output) + "\nbefore " + (before ? fileText(*before) : nothing) +
           "\nsource " + pathText(source) + "\nsource-file " + fileText(sourceFile) + '\n';
}

QByteArray RunNote::madeText(const File& made) {
    return "made " + fileText(made) + '\n';
}

std::optional<RunNote> RunNote::fromText(const QByteArray& text) {
    if (text.size() > longestText)
        return std::nullopt;
    const QByteArray whole = text.left(text.lastIndexOf('\n') + 1);
    const QList<QByteArray> lines = whole.split('\n');
    // Behind the last line end there is an empty piece.
    if (lines.size() != 8 && lines.size() != 9)
        return std::nullopt;
    RunNote note;
    note.boot = field(lines[1], "boot");
    note.launched = field(lines[2], "launched").toLongLong();
    note.output = QByteArray::fromPercentEncoding(field(lines[3], "output"));
    note.before = fileOf(field(lines[4], "before"));
    note.source = QByteArray::fromPercentEncoding(field(lines[5], "source"));
    note.sourceFile = fileOf(field(lines[6], "source-file")).value_or(File());
    if (lines.size() == 9)
        note.made = fileOf(field(lines[7], "made"));
    if (!isPath(note.output) || !isPath(note.source))
        return std::nullopt;
    if (note.text() + (note.made ? madeText(*note.made) : QByteArray()) != whole)
        return std::nullopt;
    return note;
}

RunNote::File noted(const struct stat& file) {
    return {file.st_dev, file.st_ino, static_cast<quint64>(file.st_size), file.st_mtim.tv_sec,
            file.st_mtim.tv_nsec};
}
