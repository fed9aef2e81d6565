#include "app/ToolkitLink.h"

#include "model/MenuItemArray.h"
#include "platform/PropertyList.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlHandler.h"
#include "support/MemoryDesktop.h"
#include "toolkit/Digest.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString toolkitScheme = u"orbita-toolkit-com"_s;

QVariantMap scriptEntry(const QString &script)
{
    return {{u"class"_s, u"AppleScriptMenuItem"_s}, {u"name"_s, script}, {u"script"_s, script}};
}

QVariantMap collectionEntry(const QVariantList &members)
{
    return {{u"class"_s, u"CollectionMenuItem"_s}, {u"subitems"_s, members}};
}

struct ToolkitLinkTest : testing::Test {
    MemoryDesktop desktop;
    MemoryUrlHandler urls;
    MemoryScheduler scheduler;
    MemoryDialogs dialogs;
    VXSchemeCommunicationCenter center{urls, scheduler};
    ToolkitLink link{{center, urls, desktop.workspace, dialogs, scheduler},
                     [this] { return MenuItemArray::storedEntries(folder(), desktop.defaults); }};

    [[nodiscard]] QString folder() const { return desktop.container.directories().container; }
    void store(const QVariantList &entries)
    {
        QDir().mkpath(folder());
        EXPECT_TRUE(PropertyList::write(folder() + u"/menuItems.plist"_s, entries, PropertyList::Format::Xml));
    }
    /// The answer to the question whether \a script is the user's own; empty when there is none.
    [[nodiscard]] QString answerTo(const QString &script)
    {
        VXRemoteAction question(u"verifyApplescript"_s);
        question.setValueForParameter(scriptQuestion(script), u"hash"_s);
        const auto reply = link.verifyApplescriptAction(question);
        EXPECT_TRUE(!reply || reply->name() == u"verifyApplescriptResult"_s);
        return reply ? reply->valueForParameter(u"result"_s).value_or(QString()) : QString();
    }
    /// What was sent last.
    [[nodiscard]] std::optional<VXRemoteAction> lastSent() const
    {
        const QString text = urls.opened.isEmpty() ? QString() : urls.opened.last();
        return VXRemoteAction::fromJson(
            stringByRemovingEscapeCharacters(text.mid(toolkitScheme.size() + 1)).value_or(QString()));
    }
};

TEST_F(ToolkitLinkTest, confirmsTheUsersOwnScriptsAsTheyAreStoredNow)
{
    store({scriptEntry(u"own"_s),
           collectionEntry({scriptEntry(u"grouped"_s), collectionEntry({scriptEntry(u"deep"_s)})})});
    EXPECT_EQ(answerTo(u"own"_s), scriptAnswer(u"own"_s));
    EXPECT_EQ(answerTo(u"grouped"_s), scriptAnswer(u"grouped"_s));
    EXPECT_EQ(answerTo(u"deep"_s), QString()) << "only one level deep";
    EXPECT_EQ(answerTo(u"strange"_s), QString());
    store({scriptEntry(u"strange"_s)});
    EXPECT_EQ(answerTo(u"strange"_s), scriptAnswer(u"strange"_s));
    EXPECT_EQ(answerTo(u"own"_s), QString());
    EXPECT_FALSE(link.verifyApplescriptAction(VXRemoteAction(u"verifyApplescript"_s))) << "a question without a hash";
    VXRemoteAction loud(u"verifyApplescript"_s);
    loud.setValueForParameter(scriptQuestion(u"strange"_s).toUpper(), u"hash"_s);
    EXPECT_FALSE(link.verifyApplescriptAction(loud)) << "digests are compared as they are";
}

TEST_F(ToolkitLinkTest, writesAndLogsNothingForAnAnswer)
{
    const QString file = desktop.container.itemFile();
    testing::internal::CaptureStderr();
    desktop.defaults.setValue(u"menuItems"_s, QVariantList{scriptEntry(u"legacy"_s)});
    EXPECT_EQ(answerTo(u"legacy"_s), scriptAnswer(u"legacy"_s));
    EXPECT_FALSE(QFile::exists(file));
    desktop.container.write(u"data/menuItems.plist"_s, "damaged");
    EXPECT_EQ(answerTo(u"legacy"_s), QString());
    EXPECT_EQ(QDir(folder()).entryList({u"menuItems*"_s}), QStringList(u"menuItems.plist"_s));
    EXPECT_EQ(TemporaryContainer::read(file), "damaged");
    store({QVariantMap{{u"class"_s, u"AppMenuItem"_s}}});
    EXPECT_EQ(answerTo(u"own"_s), QString());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ToolkitLinkTest, answersACompanionThatAsksBeforeAllHasStarted)
{
    urls.schemes = {toolkitScheme};
    store({scriptEntry(u"own"_s)});
    VXRemoteAction question(u"verifyApplescript"_s);
    question.setValueForParameter(scriptQuestion(u"own"_s), u"hash"_s);
    question.setValueForParameter(u"7"_s, u"_RemoteActionResponseId"_s);
    link.handleUrl(u"orbita-com:"_s + stringByAddingEscapeCharacters(question.jsonRepresentation()));
    ASSERT_TRUE(lastSent());
    EXPECT_EQ(lastSent()->valueForParameter(u"result"_s), scriptAnswer(u"own"_s));
    EXPECT_EQ(lastSent()->valueForParameter(u"_RemoteActionResponseId"_s), u"7"_s);
}

TEST_F(ToolkitLinkTest, startsTheCompanionAndAsksItsVersionASecondLater)
{
    urls.schemes = {toolkitScheme};
    link.start();
    EXPECT_EQ(urls.opened, QStringList(u"orbita-toolkit-com:"_s)) << "the bare address starts it";
    scheduler.advance(999ms);
    EXPECT_EQ(urls.opened.size(), 1);
    scheduler.advance(1ms);
    ASSERT_TRUE(lastSent());
    EXPECT_EQ(lastSent()->name(), u"version"_s);
    VXRemoteAction answer = *lastSent();
    answer.setValueForParameter(u"1.0"_s, u"version"_s);
    testing::internal::CaptureStderr();
    link.handleUrl(u"orbita-com:"_s + stringByAddingEscapeCharacters(answer.jsonRepresentation()));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("toolkit is up to date."));
    scheduler.advance(1h);
    EXPECT_EQ(urls.opened.size(), 2) << "it is asked once";
    EXPECT_TRUE(dialogs.alerts.empty());
    link.terminate();
    EXPECT_EQ(lastSent()->name(), u"terminate"_s);
    EXPECT_TRUE(lastSent()->params().isEmpty());
    EXPECT_EQ(urls.flushed, urls.opened.size()) << "it gets there before the program ends";
}

TEST_F(ToolkitLinkTest, offersToReplaceACompanionThatDoesNotKnowTheMessages)
{
    int quits = 0;
    QObject::connect(&link, &ToolkitLink::quitRequested, &link, [&quits] { ++quits; });
    link.start();
    scheduler.advance(1s);
    EXPECT_TRUE(dialogs.alerts.empty()) << "there is none at all";
    urls.schemes = {u"orbita-toolkit"_s};
    desktop.workspace.schemeHandlers = {{u"https"_s, u"/web.desktop"_s}};
    for (const int pressed : {1, 0}) {
        dialogs.answer = pressed;
        ToolkitLink next({center, urls, desktop.workspace, dialogs, scheduler}, {});
        QObject::connect(&next, &ToolkitLink::quitRequested, &link, [&quits] { ++quits; });
        next.start();
        scheduler.advance(10s);
        EXPECT_EQ(quits, pressed == 0 ? 1 : 0);
    }
    ASSERT_EQ(dialogs.alerts.size(), 2U);
    EXPECT_EQ(dialogs.alerts[0].message, u"New version of Orbita Toolkit available"_s);
    EXPECT_EQ(dialogs.alerts[0].informativeText,
              u"Download and install the most recent version now to take advantage of the latest features.\n"
              "Restart Orbita afterwards."_s);
    EXPECT_EQ(dialogs.alerts[0].buttons, QStringList({u"OK"_s, u"Later"_s}));
    EXPECT_EQ(urls.opened, QStringList({u"orbita-toolkit:"_s, u"orbita-toolkit:terminate"_s}));
    ASSERT_EQ(desktop.workspace.actions.size(), 1);
    EXPECT_TRUE(desktop.workspace.actions[0].endsWith(u"#toolkit"_s)) << qPrintable(desktop.workspace.actions[0]);
}

} // namespace
} // namespace Orbita
