// An application of one plain window, for tests to look at and to play with. Says on its standard output what
// happens to it, a line each: "ready", "click X Y", "drag", "dragged ACTION", "enter", "drop URL".

#include <QApplication>
#include <QCommandLineParser>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

void say(const QString &line)
{
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

class PlainWindow : public QWidget {
public:
    PlainWindow(const QColor &color, const QUrl &draggedUrl) : m_color(color), m_draggedUrl(draggedUrl)
    {
        setAcceptDrops(true);
        setAttribute(Qt::WA_TranslucentBackground, color.alpha() < 255);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), m_color);
        // Not before it has been painted and its frame is settled is the window fit to be played with.
        if (!std::exchange(m_ready, true))
            QTimer::singleShot(0, this, [] { say(u"ready"_s); });
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        say(u"click %1 %2"_s.arg(event->pos().x()).arg(event->pos().y()));
    }
    void mouseMoveEvent(QMouseEvent *) override
    {
        if (m_draggedUrl.isEmpty())
            return;
        // Deletes itself once the target has fetched the data, which is after exec().
        auto *drag = new QDrag(this);
        auto *urls = new QMimeData;
        urls->setUrls({m_draggedUrl});
        drag->setMimeData(urls);
        say(u"drag"_s);
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::LinkAction | Qt::MoveAction, Qt::CopyAction);
        say(u"dragged %1"_s.arg(action));
    }
    void dragEnterEvent(QDragEnterEvent *event) override
    {
        say(u"enter"_s);
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent *event) override
    {
        for (const QUrl &url : event->mimeData()->urls())
            say(u"drop "_s + QString::fromLatin1(url.toEncoded()));
        event->acceptProposedAction();
    }

private:
    QColor m_color;
    QUrl m_draggedUrl;
    bool m_ready = false;
};

} // namespace

int main(int argc, char **argv)
{
    // WM_CLASS is made before any option is read: from -name, which Qt takes for itself, and the application's name.
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--class") == 0)
            QCoreApplication::setApplicationName(QString::fromUtf8(argv[i + 1]));
    }
    const QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.addOptions({
        {u"class"_s, u"Class part of WM_CLASS; -name sets the instance part."_s, u"name"_s},
        {u"title"_s, u"Title of the window."_s, u"title"_s, u"Plain window"_s},
        {u"color"_s, u"What it is filled with; #AARRGGBB may be translucent."_s, u"color"_s, u"#3366cc"_s},
        {u"drag"_s, u"What a press and a move start to drag."_s, u"url"_s},
        {u"full-screen"_s, u"Fills the screen."_s},
    });
    parser.process(application);

    PlainWindow window(QColor(parser.value(u"color"_s)), QUrl(parser.value(u"drag"_s)));
    window.setWindowTitle(parser.value(u"title"_s));
    window.setGeometry(100, 100, 300, 200);
    window.setWindowState(parser.isSet(u"full-screen"_s) ? Qt::WindowFullScreen : Qt::WindowNoState);
    window.show();
    return QApplication::exec();
}
