// Another program with movies to drag, for tests on a real display:
//
//     drag_source X Y FILE...
//     drag_source X Y --data TYPE HEX
//
// shows a small window at that place and writes a line to its standard output for what happens:
// "ready" when it can be dragged from, "dragging" when a drag has begun, and "dropped ACTION" when
// it is over. It offers its files (or that data) to be copied, moved or linked, as file managers
// do, and what was to be moved it would have to delete. It lives on until its standard input ends:
// data that is asked for after the drop would never come otherwise.

#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QSocketNotifier>
#include <QUrl>

#include <cstdio>

#include <unistd.h>

namespace {

void tell(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

const char* nameOf(Qt::DropAction action) {
    switch (action) {
    case Qt::CopyAction:
        return "dropped copy";
    case Qt::MoveAction:
    case Qt::TargetMoveAction:
        return "dropped move";
    case Qt::LinkAction:
        return "dropped link";
    default:
        return "dropped nowhere";
    }
}

class Source final : public QLabel {
public:
    explicit Source(const QStringList& offered)
        : QLabel(QStringLiteral("movies")), offered_(offered) {
        setWindowTitle(QStringLiteral("drag source"));
        setAlignment(Qt::AlignCenter);
    }

protected:
    void mouseMoveEvent(QMouseEvent*) override {
        if (std::exchange(isDragging_, true))
            return;
        auto* const drag = new QDrag(this);
        drag->setMimeData(offer());
        tell("dragging");
        const Qt::DropAction action =
            drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::MoveAction);
        tell(nameOf(action));
    }
    void mouseReleaseEvent(QMouseEvent*) override { isDragging_ = false; }
    void mousePressEvent(QMouseEvent*) override { isDragging_ = false; }
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!std::exchange(isReady_, true))
            QMetaObject::invokeMethod(
                this, [] { tell("ready"); }, Qt::QueuedConnection);
    }

private:
    QMimeData* offer() const {
        auto* const data = new QMimeData;
        if (offered_[0] == QStringLiteral("--data")) {
            data->setData(offered_.value(1), QByteArray::fromHex(offered_.value(2).toLatin1()));
            return data;
        }
        QList<QUrl> urls;
        for (const QString& each : offered_)
            urls += QUrl::fromLocalFile(each);
        data->setUrls(urls);
        return data;
    }

    const QStringList offered_;
    bool isDragging_ = false;
    bool isReady_ = false;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 4)
        return 2;
    Source source(arguments.mid(3));
    source.setGeometry(arguments[1].toInt(), arguments[2].toInt(), 160, 90);
    source.show();
    QSocketNotifier end(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &application, [] {
        char piece[64];
        if (read(STDIN_FILENO, piece, sizeof piece) <= 0)
            QApplication::quit();
    });
    return QApplication::exec();
}
