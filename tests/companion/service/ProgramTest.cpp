#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "platform/PropertyList.h"
#include "platform/desktop/DesktopApplication.h"
#include "toolkit/Digest.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXRemoteAction.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Orbita;
using namespace Qt::StringLiterals;

namespace {

const QString toolkit = u"org.orbita.Toolkit"_s;
const QString program = u"orbita-toolkit"_s;
const QString script = u"#!/bin/sh\ntouch \"$HOME/ran\"; exec sleep 600"_s;

/// A desktop where the test stands for Orbita.
class ToolkitProgram : public testing::Test {
protected:
    ToolkitProgram()
    {
        QObject::connect(&orbita, &DesktopApplication::opened, &orbita,
                         [this](const QStringList &urls) { got += urls; });
    }

    static QVariantList addressOf(const VXRemoteAction &action)
    {
        const QString url = program + u"-com:"_s + stringByAddingEscapeCharacters(action.jsonRepresentation());
        return {QStringList{url}, QVariantMap()};
    }
    void send(const VXRemoteAction &action) const
    {
        session.bus().call(toolkit, DesktopApplication::objectPath(toolkit), u"org.freedesktop.Application"_s,
                           u"Open"_s, addressOf(action));
    }
    /// Sends \a action without waiting for anything.
    void sendInPassing(const VXRemoteAction &action) const
    {
        auto call = QDBusMessage::createMethodCall(toolkit, DesktopApplication::objectPath(toolkit),
                                                   u"org.freedesktop.Application"_s, u"Open"_s);
        call.setArguments(addressOf(action));
        session.bus().connection().send(call);
    }
    void execute() const
    {
        VXRemoteAction action(u"executeApplescript"_s);
        action.setValueForParameter(script, u"script"_s);
        send(action);
    }
    /// Answers the question that came last.
    void vouch() const
    {
        auto action = *VXRemoteAction::fromJson(*stringByRemovingEscapeCharacters(got.last().section(u':', 1)));
        action.setName(u"verifyApplescriptResult"_s);
        action.setValueForParameter(scriptAnswer(script), u"result"_s);
        send(action);
    }
    [[nodiscard]] bool hasRun() const { return QFile::exists(session.folders().home() + u"/ran"_s); }

    DesktopSession session{{.windowManager = WindowManager::None}};
    DesktopApplication orbita{u"org.orbita.Orbita"_s};
    QStringList got;
};

TEST_F(ToolkitProgram, runs_a_script_that_orbita_vouches_for_and_ends_in_good_order)
{
    ASSERT_EQ(orbita.registerOn(session.bus().connection()), DesktopApplication::Registration::Registered);
    const QString items = session.folders().data() + u"/orbita/menuItems.plist"_s;
    const QVariantMap item{{u"class"_s, u"AppleScriptMenuItem"_s}, {u"script"_s, script}};
    QDir().mkpath(QFileInfo(items).path());
    ASSERT_TRUE(PropertyList::write(items, QVariantList{item}, PropertyList::Format::Xml).hasValue());
    Program &service = session.start(program, {u"--service"_s});
    session.bus().waitForName(toolkit);
    execute();
    waitUntil([this] { return got.value(got.size() - 1).size() > 20; }, u"the question came"_s);
    EXPECT_FALSE(hasRun());
    vouch();
    waitUntil([this] { return hasRun(); }, u"the script ran"_s);
    EXPECT_EQ(session.start(program, {u"--stop-scripts"_s}).waitForExit(), 0);
    waitUntil([&] { return QDir(session.folders().runtime() + u"/orbita-toolkit"_s).isEmpty(); },
              u"the script was stopped"_s);
    EXPECT_TRUE(service.isRunning());
    EXPECT_EQ(service.terminate(), 0);
}

TEST_F(ToolkitProgram, hands_addresses_to_the_instance_that_runs_and_does_not_start_orbita)
{
    EXPECT_EQ(session.start(program, {u"--stop-scripts"_s}).waitForExit(), 1) << "none runs";
    Program &service = session.start(program);
    session.bus().waitForName(toolkit);
    EXPECT_EQ(session.start(program, {program + u"-com:nonsense"_s}).waitForExit(), 0);
    service.waitForOutput(u"Refused: an address that holds no action"_s);
    execute();
    service.waitForOutput(u"Orbita does not run"_s);
}

TEST_F(ToolkitProgram, ends_for_orbita_alone_and_also_when_that_was_its_last_word)
{
    const VXRemoteAction terminate(u"terminate"_s);
    Program &service = session.start(program);
    session.bus().waitForName(toolkit);
    send(terminate);
    service.waitForOutput(u"Refused: to quit an application or to end"_s);
    Bus other(session.folders().busAddress());
    ASSERT_EQ(orbita.registerOn(other.connection()), DesktopApplication::Registration::Registered);
    send(terminate);
    service.waitForOutput(u"Refused: to quit an application or to end"_s);

    QDBusConnection(other.connection()).unregisterService(u"org.orbita.Orbita"_s);
    ASSERT_EQ(orbita.registerOn(session.bus().connection()), DesktopApplication::Registration::Registered);
    const qsizetype heard = service.lines().size();
    sendInPassing(terminate);
    QDBusConnection(session.bus().connection()).unregisterService(u"org.orbita.Orbita"_s);
    EXPECT_EQ(service.waitForExit(), 0);
    EXPECT_EQ(service.lines().size(), heard) << "it was obeyed, not refused and only then left alone";
}

} // namespace
