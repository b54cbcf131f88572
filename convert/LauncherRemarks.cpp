#include "convert/LauncherRemarks.h"

#include "system/LauncherWords.h"

namespace {

// Of what is no remark no more is kept than shows that.
bool mayBeRemark(const QByteArray& line) {
    const QByteArrayView words(remarkWords);
    return words.startsWith(QByteArrayView(line).first(qMin(line.size(), words.size())));
}

} // namespace

QStringList LauncherRemarks::add(const QByteArray& bytes) {
    QStringList remarks;
    if (isOver_)
        return remarks;
    open_ += bytes;
    for (qsizetype end = open_.indexOf('\n'); end >= 0 && mayBeRemark(open_);
         end = open_.indexOf('\n')) {
        constexpr qsizetype length = sizeof remarkWords - 1;
        if (end >= length)
            remarks += QString::fromUtf8(open_.sliced(length, end - length));
        open_.remove(0, end + 1);
    }
    isOver_ = !mayBeRemark(open_);
    if (isOver_)
        open_.clear();
    return remarks;
}
