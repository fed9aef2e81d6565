#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/memory/MemoryWorkspace.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace Orbita {

namespace {

/// A desktop on which one application is installed, which opens PNG pictures and URLs of the scheme "probe".
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual Workspace &workspace() = 0;
    virtual QString application() = 0;
    virtual QString picture() = 0;
    /// Makes the next action fail: what it is about has gone.
    virtual void makeVanish() = 0;
    /// What the application was asked to open since the last call; nothing when it was not started at all.
    virtual std::optional<QString> takeOpened() = 0;
};

class MemoryDesktop final : public Desktop {
public:
    MemoryDesktop()
    {
        m_workspace.fileHandlers.insert(picture(), {application()});
        m_workspace.schemeHandlers.insert(QStringLiteral("probe"), application());
    }
    Workspace &workspace() override { return m_workspace; }
    QString application() override { return QStringLiteral("/applications/probe.desktop"); }
    QString picture() override { return QStringLiteral("/pictures/some picture.png"); }
    void makeVanish() override { m_workspace.nextError = Workspace::Error::Missing; }
    std::optional<QString> takeOpened() override
    {
        if (m_workspace.actions.isEmpty())
            return std::nullopt;
        const QString action = m_workspace.actions.takeLast();
        if (action.startsWith(QLatin1String("launch ")))
            return QString();
        return action.section(u' ', 1).section(QStringLiteral(" with "), 0, 0);
    }

private:
    MemoryWorkspace m_workspace;
};

class GioDesktop final : public Desktop {
public:
    GioDesktop()
    {
        PrivateSession::clear();
        m_probe.emplace(QStringLiteral("probe program"));
        m_application = PrivateSession::install(
            QStringLiteral("probe.desktop"),
            m_probe->desktopFile("\"%p\" %U", "MimeType=image/png;x-scheme-handler/probe;\n"));
        PrivateSession::associate(QStringLiteral("image/png"), QStringLiteral("probe.desktop"));
        PrivateSession::associate(QStringLiteral("x-scheme-handler/probe"), QStringLiteral("probe.desktop"));
        m_picture = PrivateSession::write(QStringLiteral("files/some picture.png"), "\x89PNG\r\n\x1a\n");
    }
    Workspace &workspace() override { return m_workspace; }
    QString application() override { return m_application; }
    QString picture() override { return m_picture; }
    void makeVanish() override
    {
        QFile::remove(m_application);
        QFile::remove(m_picture);
    }
    std::optional<QString> takeOpened() override
    {
        const auto start = m_probe->waitForStart();
        if (!start)
            return std::nullopt;
        const QString opened = start->arguments.value(0);
        return opened.startsWith(QLatin1String("file:")) ? QUrl(opened).toLocalFile() : opened;
    }

private:
    std::optional<Probe> m_probe;
    QString m_application;
    QString m_picture;
    GioWorkspace m_workspace{std::make_unique<NoStartupNotifier>()};
};

template <typename T>
class WorkspaceContract : public testing::Test {
protected:
    T m_desktop;
};

using Desktops = testing::Types<MemoryDesktop, GioDesktop>;
TYPED_TEST_SUITE(WorkspaceContract, Desktops);

TYPED_TEST(WorkspaceContract, AnApplicationIsLaunchedWithNothingToOpen)
{
    ASSERT_TRUE(this->m_desktop.workspace().launchApplication(this->m_desktop.application()));
    EXPECT_EQ(this->m_desktop.takeOpened(), QString());
}

TYPED_TEST(WorkspaceContract, AFileIsOpenedByItsDefaultApplicationOrAGivenOne)
{
    auto &desktop = this->m_desktop;
    ASSERT_TRUE(desktop.workspace().openFile(desktop.picture()));
    EXPECT_EQ(desktop.takeOpened(), desktop.picture());
    ASSERT_TRUE(desktop.workspace().openFile(desktop.picture(), desktop.application()));
    EXPECT_EQ(desktop.takeOpened(), desktop.picture());
}

TYPED_TEST(WorkspaceContract, AUrlReachesItsHandlerAsItWas)
{
    const QUrl url(QStringLiteral("probe:name?%7B%22x%22:%22a%20b%22%7D"));
    ASSERT_TRUE(this->m_desktop.workspace().openUrl(url));
    EXPECT_EQ(QUrl(this->m_desktop.takeOpened().value_or(QString())), url);
}

TYPED_TEST(WorkspaceContract, WhatHasGoneIsNotFound)
{
    auto &desktop = this->m_desktop;
    const auto fails = [&desktop](auto action) {
        desktop.makeVanish();
        const auto result = action(desktop.workspace());
        return !result && result.error() == Workspace::Error::Missing;
    };
    EXPECT_TRUE(fails([&](Workspace &w) { return w.launchApplication(desktop.application()); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.openFile(desktop.picture()); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.openFile(desktop.picture(), desktop.application()); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.showInFileManager(desktop.picture()); }));
}

TYPED_TEST(WorkspaceContract, HandlersAreKnownAndUnknownOnesAreNothing)
{
    auto &desktop = this->m_desktop;
    const Workspace &workspace = desktop.workspace();
    EXPECT_EQ(workspace.defaultApplicationForScheme(QStringLiteral("probe")), desktop.application());
    EXPECT_EQ(workspace.defaultApplicationForScheme(QStringLiteral("no-such-scheme")), std::nullopt);
    EXPECT_EQ(workspace.defaultApplicationForScheme(QString()), std::nullopt);
    EXPECT_EQ(workspace.defaultApplicationForFile(desktop.picture()), desktop.application());
    EXPECT_TRUE(workspace.applicationsForFile(desktop.picture()).contains(desktop.application()));
    EXPECT_EQ(workspace.defaultApplicationForFile(QStringLiteral("/no/such/file")), std::nullopt);
    EXPECT_EQ(workspace.coreApplication(QStringLiteral("No such role")), std::nullopt);
}

TYPED_TEST(WorkspaceContract, EverythingHasANameAndAnIcon)
{
    auto &desktop = this->m_desktop;
    for (const QString &path : {desktop.application(), desktop.picture(), QStringLiteral("/no/such/file")}) {
        EXPECT_FALSE(desktop.workspace().displayName(path).isEmpty()) << qPrintable(path);
        EXPECT_FALSE(desktop.workspace().icon(path).render({32, 32}).isNull()) << qPrintable(path);
    }
}

} // namespace

} // namespace Orbita
