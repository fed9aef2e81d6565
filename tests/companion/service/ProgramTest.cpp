#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "platform/desktop/DesktopApplication.h"
#include "toolkit/Digest.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXRemoteAction.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Orbita;

namespace {

const QString toolkit = QStringLiteral("org.orbita.Toolkit");
const QString program = QStringLiteral("orbita-toolkit");
const QString script = QStringLiteral("#!/bin/sh\ntouch \"$HOME/ran\"; exec sleep 600");

/// A desktop where the test stands for Orbita.
class ToolkitProgram : public testing::Test {
protected:
    ToolkitProgram()
    {
        session.folders().installApplication(QStringLiteral("org.orbita.Orbita"),
                                             "[Desktop Entry]\nType=Application\nName=Orbita\nExec=true %U\n"
                                             "DBusActivatable=true\nMimeType=x-scheme-handler/orbita-com;\n");
        session.folders().write(session.folders().configuration() + QStringLiteral("/mimeapps.list"),
                                "[Default Applications]\nx-scheme-handler/orbita-com=org.orbita.Orbita.desktop\n");
        QObject::connect(&orbita, &DesktopApplication::opened, &orbita,
                         [this](const QStringList &urls) { got += urls; });
    }

    void send(const VXRemoteAction &action) const
    {
        const QString url
            = program + QStringLiteral("-com:") + stringByAddingEscapeCharacters(action.jsonRepresentation());
        session.bus().call(toolkit, DesktopApplication::objectPath(toolkit), application, QStringLiteral("Open"),
                           {QStringList{url}, QVariantMap()});
    }
    void execute() const
    {
        VXRemoteAction action(QStringLiteral("executeApplescript"));
        action.setValueForParameter(script, QStringLiteral("script"));
        send(action);
    }
    /// Answers the question that came last.
    void vouch() const
    {
        auto action = *VXRemoteAction::fromJson(*stringByRemovingEscapeCharacters(got.last().section(u':', 1)));
        action.setName(QStringLiteral("verifyApplescriptResult"));
        action.setValueForParameter(scriptAnswer(script), QStringLiteral("result"));
        send(action);
    }
    [[nodiscard]] bool hasRun() const { return QFile::exists(session.folders().home() + QStringLiteral("/ran")); }

    const QString application = QStringLiteral("org.freedesktop.Application");
    DesktopSession session{{.windowManager = WindowManager::None}};
    DesktopApplication orbita{QStringLiteral("org.orbita.Orbita")};
    QStringList got;
};

TEST_F(ToolkitProgram, runs_a_script_that_orbita_vouches_for_and_ends_in_good_order)
{
    ASSERT_EQ(orbita.registerOn(session.bus().connection()), DesktopApplication::Registration::Registered);
    Program &service = session.start(program, {QStringLiteral("--service")});
    session.bus().waitForName(toolkit);
    execute();
    waitUntil([this] { return got.value(got.size() - 1).size() > 20; }, QStringLiteral("the question came"));
    EXPECT_FALSE(hasRun());
    vouch();
    waitUntil([this] { return hasRun(); }, QStringLiteral("the script ran"));
    EXPECT_EQ(session.start(program, {QStringLiteral("--stop-scripts")}).waitForExit(), 0);
    waitUntil([&] { return QDir(session.folders().runtime() + QStringLiteral("/orbita-toolkit")).isEmpty(); },
              QStringLiteral("the script was stopped"));
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(service.terminate(), 0);
}

TEST_F(ToolkitProgram, hands_addresses_to_the_instance_that_runs_and_does_not_start_orbita)
{
    EXPECT_EQ(session.start(program, {QStringLiteral("--stop-scripts")}).waitForExit(), 1) << "none runs";
    Program &service = session.start(program);
    session.bus().waitForName(toolkit);
    EXPECT_EQ(session.start(program, {program + QStringLiteral("-com:nonsense")}).waitForExit(), 0);
    service.waitForOutput(QStringLiteral("Refused: an address that holds no action"));
    execute();
    service.waitForOutput(QStringLiteral("Orbita does not run"));
    send(VXRemoteAction(QStringLiteral("terminate")));
    EXPECT_EQ(service.waitForExit(), 0);
}

} // namespace
