#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/memory/MemoryWorkspace.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace Orbita {

namespace {

// A desktop on which one application is installed, which opens PNG pictures and URLs of the scheme "probe".

struct MemoryDesktop {
    const QString application = QStringLiteral("/applications/probe.desktop");
    const QString picture = QStringLiteral("/pictures/some picture.png");
    MemoryWorkspace workspace;

    MemoryDesktop()
    {
        workspace.fileHandlers.insert(picture, {application});
        workspace.schemeHandlers.insert(QStringLiteral("probe"), application);
    }
    /// Makes the next action fail: what it is about has gone.
    void makeVanish() { workspace.nextError = Workspace::Error::Missing; }
    /// What the application was asked to open since the last call.
    QString takeOpened()
    {
        const QString action = workspace.actions.takeLast();
        if (action.startsWith(QLatin1String("launch ")))
            return {};
        return action.section(u' ', 1).section(QStringLiteral(" with "), 0, 0);
    }
};

struct GioDesktop {
    Probe probe = [] {
        PrivateSession::clear();
        return Probe("probe program");
    }();
    const QString application = PrivateSession::install(
        "probe", probe.desktopFile("\"%p\" %U", "MimeType=image/png;x-scheme-handler/probe;\n"));
    const QString picture = PrivateSession::write("files/some picture.png", "\x89PNG\r\n\x1a\n");
    GioWorkspace workspace{std::make_unique<NoStartupNotifier>()};

    GioDesktop()
    {
        PrivateSession::associate("image/png", "probe");
        PrivateSession::associate("x-scheme-handler/probe", "probe");
    }
    void makeVanish()
    {
        QFile::remove(application);
        QFile::remove(picture);
    }
    QString takeOpened()
    {
        const QString opened = probe.waitForStart()["argument"].value(0);
        return opened.startsWith(QLatin1String("file:")) ? QUrl(opened).toLocalFile() : opened;
    }
};

template <typename Desktop>
class WorkspaceContract : public testing::Test {
};

using Desktops = testing::Types<MemoryDesktop, GioDesktop>;
TYPED_TEST_SUITE(WorkspaceContract, Desktops);

TYPED_TEST(WorkspaceContract, ReachesTheApplicationWithWhatItIsToOpen)
{
    TypeParam desktop;
    ASSERT_TRUE(desktop.workspace.launchApplication(desktop.application));
    EXPECT_EQ(desktop.takeOpened(), QString());
    ASSERT_TRUE(desktop.workspace.openFile(desktop.picture));
    EXPECT_EQ(desktop.takeOpened(), desktop.picture);
    ASSERT_TRUE(desktop.workspace.openFile(desktop.picture, desktop.application));
    EXPECT_EQ(desktop.takeOpened(), desktop.picture);
    const QUrl url(QStringLiteral("probe:name?%7B%22x%22:%22a%20b%22%7D"));
    ASSERT_TRUE(desktop.workspace.openUrl(url));
    EXPECT_EQ(QUrl(desktop.takeOpened()), url) << "as it was";
}

TYPED_TEST(WorkspaceContract, WhatHasGoneIsNotFound)
{
    TypeParam desktop;
    const auto fails = [&desktop](auto action) {
        desktop.makeVanish();
        const auto result = action(desktop.workspace);
        return !result && result.error() == Workspace::Error::Missing;
    };
    EXPECT_TRUE(fails([&](Workspace &w) { return w.launchApplication(desktop.application); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.openFile(desktop.picture); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.openFile(desktop.picture, desktop.application); }));
    EXPECT_TRUE(fails([&](Workspace &w) { return w.showInFileManager(desktop.picture); }));
}

TYPED_TEST(WorkspaceContract, HandlersAreKnownAndEverythingHasANameAndAnIcon)
{
    TypeParam desktop;
    const Workspace &workspace = desktop.workspace;
    EXPECT_EQ(workspace.defaultApplicationForScheme(QStringLiteral("probe")), desktop.application);
    EXPECT_EQ(workspace.defaultApplicationForScheme(QStringLiteral("no-such-scheme")), std::nullopt);
    EXPECT_EQ(workspace.defaultApplicationForScheme(QString()), std::nullopt);
    EXPECT_EQ(workspace.defaultApplicationForFile(desktop.picture), desktop.application);
    EXPECT_TRUE(workspace.applicationsForFile(desktop.picture).contains(desktop.application));
    EXPECT_EQ(workspace.defaultApplicationForFile(QStringLiteral("/no/such/file")), std::nullopt);
    EXPECT_EQ(workspace.coreApplication(QStringLiteral("No such role")), std::nullopt);
    for (const QString &path : {desktop.application, desktop.picture, QStringLiteral("/no/such/file")}) {
        EXPECT_FALSE(workspace.displayName(path).isEmpty()) << qPrintable(path);
        EXPECT_FALSE(workspace.icon(path).render({32, 32}).isNull()) << qPrintable(path);
    }
}

} // namespace

} // namespace Orbita
