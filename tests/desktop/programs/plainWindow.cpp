// An application of one plain window, for tests to look at and to play with. Says on its standard output what
// happens to it, a line each: "ready", "key NAME", "pressed" (its button), "click X Y", "drop URL", "active".

#include <QApplication>
#include <QCommandLineParser>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace {

void say(const QString &line)
{
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

class PlainWindow : public QWidget {
public:
    PlainWindow(const QColor &color, const QUrl &draggedUrl, Qt::WindowFlags flags)
        : QWidget(nullptr, flags), m_color(color), m_draggedUrl(draggedUrl)
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
            QTimer::singleShot(0, this, [] { say(QStringLiteral("ready")); });
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        say(QStringLiteral("key ") + QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText));
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        say(QStringLiteral("click %1 %2").arg(event->pos().x()).arg(event->pos().y()));
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
        say(QStringLiteral("drag"));
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::LinkAction | Qt::MoveAction, Qt::CopyAction);
        say(QStringLiteral("dragged %1").arg(action));
    }
    void dragEnterEvent(QDragEnterEvent *event) override
    {
        say(QStringLiteral("enter"));
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent *event) override
    {
        for (const QUrl &url : event->mimeData()->urls())
            say(QStringLiteral("drop ") + QString::fromLatin1(url.toEncoded()));
        event->acceptProposedAction();
    }
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::ActivationChange)
            say(isActiveWindow() ? QStringLiteral("active") : QStringLiteral("inactive"));
    }

private:
    QColor m_color;
    QUrl m_draggedUrl;
    bool m_ready = false;
};

QRect geometryFrom(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    return {parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt(), parts.value(3).toInt()};
}

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
    parser.addHelpOption();
    const auto option = [&parser](const char *name, const char *help, const char *value, const char *preset) {
        parser.addOption({QLatin1String(name), QLatin1String(help), QLatin1String(value), QLatin1String(preset)});
    };
    option("class", "Class part of WM_CLASS and name for assistive technology; -name sets the instance part.", "name",
           "plain-window");
    option("title", "Title of the window.", "title", "Plain window");
    option("color", "What it is filled with; #AARRGGBB may be translucent.", "color", "#3366cc");
    option("at", "Place and size.", "x,y,width,height", "100,100,300,200");
    option("flags", "Sum of Qt's window flags.", "number", "1");
    option("button", "Adds a button with this label.", "label", "");
    option("drag", "What a press and a move start to drag.", "url", "");
    parser.addOption({QStringLiteral("full-screen"), QStringLiteral("Fills the screen.")});
    parser.process(application);

    PlainWindow window(QColor(parser.value(QStringLiteral("color"))), QUrl(parser.value(QStringLiteral("drag"))),
                       Qt::WindowFlags(parser.value(QStringLiteral("flags")).toInt(nullptr, 0)));
    window.setWindowTitle(parser.value(QStringLiteral("title")));
    window.setGeometry(geometryFrom(parser.value(QStringLiteral("at"))));
    if (const QString label = parser.value(QStringLiteral("button")); !label.isEmpty()) {
        auto *button = new QPushButton(label, &window);
        button->move(20, 20);
        QObject::connect(button, &QPushButton::clicked, &window, [] { say(QStringLiteral("pressed")); });
    }
    if (parser.isSet(QStringLiteral("full-screen")))
        window.showFullScreen();
    else
        window.show();
    return QApplication::exec();
}
