#include "companion/service/ToolkitService.h"

#include "companion/service/OwnScripts.h"
#include "companion/service/ScriptRunner.h"
#include "platform/PropertyList.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlHandler.h"
#include "toolkit/Digest.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Orbita;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Sender = ToolkitService::Sender;

namespace {

const QString scheme = u"orbita-toolkit-com"_s;
const QString recipient = u"orbita-com"_s;
const QString script = u"beep"_s;

class RecordingRunner final : public ScriptRunner {
public:
    void run(const QString &text) override { scripts.append(text); }
    void stopAll() override { scripts.clear(); }
    [[nodiscard]] int runningCount() const override { return int(scripts.size()); }

    QStringList scripts;
};

class ToolkitServiceTest : public testing::Test {
protected:
    ToolkitServiceTest()
    {
        center.setUrlSchemeForReceiving(scheme);
        center.setUrlSchemeOfRecipient(recipient);
        QObject::connect(&service, &ToolkitService::endRequested, &service, [this] { ++ends; });
        setItems({script});
    }

    /// Makes \a scripts those of the user's items.
    void setItems(const QStringList &scripts) const
    {
        QVariantList list;
        for (const QString &text : scripts)
            list.append(QVariantMap{{u"class"_s, u"AppleScriptMenuItem"_s}, {u"script"_s, text}});
        const QVariantMap collection{{u"subitems"_s, list}};
        ASSERT_TRUE(PropertyList::write(items, QVariantList{collection}, PropertyList::Format::Binary).hasValue());
    }

    void send(const QString &name, const VXRemoteAction::Parameters &params, Sender sender = Sender::Orbita)
    {
        VXRemoteAction action(name);
        action.setParams(params);
        service.open(scheme + u':' + stringByAddingEscapeCharacters(action.jsonRepresentation()), sender);
    }
    void execute(const QString &text = script)
    {
        send(u"executeApplescript"_s, {{u"script"_s, text}}, Sender::Anybody);
    }
    void answer(const QString &result, const QString &id, const QString &name = u"verifyApplescriptResult"_s,
                Sender sender = Sender::Orbita)
    {
        send(name, {{u"result"_s, result}, {u"_RemoteActionResponseId"_s, id}}, sender);
    }
    void answerAsAnybody(const QString &result, const QString &id, const QString &name = u"verifyApplescriptResult"_s)
    {
        answer(result, id, name, Sender::Anybody);
    }
    /// What was sent to Orbita last.
    [[nodiscard]] VXRemoteAction sent() const
    {
        const QString json = *stringByRemovingEscapeCharacters(urls.opened.last().mid(recipient.size() + 1));
        return *VXRemoteAction::fromJson(json);
    }
    [[nodiscard]] QString lastId() const
    {
        return sent().valueForParameter(u"_RemoteActionResponseId"_s).value_or(QString());
    }

    MemoryUrlHandler urls;
    MemoryScheduler scheduler;
    RecordingRunner runner;
    VXSchemeCommunicationCenter center{urls, scheduler};
    QList<qint64> quits;
    int ends = 0;
    QTemporaryDir folder;
    const QString items = folder.filePath(u"menuItems.plist"_s);
    ToolkitService service{center,
                           runner,
                           {[this](qint64 process) -> Result<void, QString> {
                                quits.append(process);
                                return Failure(u"No."_s);
                            },
                            [this](const QString &text) { return isOwnScript(items, text); }}};
};

TEST_F(ToolkitServiceTest, answers_with_its_version)
{
    send(u"version"_s, {{u"_RemoteActionResponseId"_s, u"7"_s}}, Sender::Anybody);
    EXPECT_EQ(sent().name(), u"version"_s);
    EXPECT_EQ(sent().valueForParameter(u"version"_s), u"1.0"_s);
    EXPECT_EQ(lastId(), u"7"_s);
}

TEST_F(ToolkitServiceTest, runs_a_script_once_that_orbita_vouches_for)
{
    execute();
    EXPECT_EQ(sent().valueForParameter(u"hash"_s), scriptQuestion(script));
    const QString id = lastId();
    // Others neither answer the question nor take it away.
    answerAsAnybody(scriptAnswer(script), id);
    answerAsAnybody(QString(), id);
    answerAsAnybody(QString(), id, u"version"_s);
    EXPECT_TRUE(runner.scripts.isEmpty());
    answer(scriptAnswer(script), id);
    EXPECT_EQ(runner.scripts, QStringList{script});
    answer(scriptAnswer(script), id); // replayed
    EXPECT_EQ(runner.scripts, QStringList{script});
}

TEST_F(ToolkitServiceTest, runs_nothing_without_the_right_answer)
{
    const QString right = scriptAnswer(script);
    const std::pair<const char *, std::function<void(const QString &)>> cases[]{
        {"none", [](const QString &) {}},
        {"a wrong digest", [&](const QString &id) { answer(scriptQuestion(script), id); }},
        {"under another name", [&](const QString &id) { answer(right, id, u"version"_s); }},
        {"without an id", [&](const QString &) { answer(right, QString()); }},
        {"from somebody else", [&](const QString &id) { answerAsAnybody(right, id); }},
    };
    for (const auto &[name, proceed] : cases) {
        execute();
        const QString id = lastId();
        proceed(id);
        scheduler.advance(10s);
        answer(right, id); // too late
        EXPECT_TRUE(runner.scripts.isEmpty()) << name;
    }
    execute();
    answer(right, lastId());
    EXPECT_EQ(runner.scripts.size(), 1);
}

TEST_F(ToolkitServiceTest, runs_only_what_is_an_item_letter_for_letter_whatever_the_answer)
{
    const QString own = QString::fromUtf8("# \u00E4\u00E4 ok");
    const QString forged = QString::fromUtf8("# \u00E4\u00E4 rm");
    ASSERT_EQ(scriptAnswer(forged), scriptAnswer(own)) << "the digests do not reach that far";
    setItems({own});
    for (const QString &text : {forged, script, own}) {
        execute(text);
        answer(scriptAnswer(text), lastId());
    }
    EXPECT_EQ(runner.scripts, QStringList{own});
}

TEST_F(ToolkitServiceTest, asks_about_few_scripts_at_once_and_none_too_large)
{
    execute(QString(ToolkitService::maximumScriptSize / 2 + 1, u'\u00E4'));
    execute(QString());
    EXPECT_TRUE(urls.opened.isEmpty());

    for (int i = 0; i < 10'000; ++i)
        execute();
    EXPECT_EQ(urls.opened.size(), ToolkitService::maximumWaitingScripts);
    scheduler.advance(10s);
    for (int i = 0; i < 100; ++i) {
        execute();
        answer(scriptAnswer(script), lastId());
    }
    EXPECT_EQ(runner.runningCount(), ToolkitService::maximumRunningScripts);
}

TEST_F(ToolkitServiceTest, quits_for_orbita_what_has_a_number_and_ends_without_one)
{
    const QString terminate = u"terminate"_s;
    send(terminate, {{u"processId"_s, u"4711"_s}}, Sender::Anybody);
    send(terminate, {}, Sender::Anybody);
    EXPECT_TRUE(quits.isEmpty() && ends == 0);
    for (const char *number : {"", "12a", "1e3", "0x10", "99999999999999999999"})
        send(terminate, {{u"processId"_s, QLatin1String(number)}});
    EXPECT_TRUE(quits.isEmpty());
    for (const char *number : {"-1", "4711"})
        send(terminate, {{u"processId"_s, QLatin1String(number)}});
    EXPECT_EQ(quits, (QList<qint64>{-1, 4711}));
    EXPECT_EQ(ends, 0);
    send(terminate, {});
    EXPECT_EQ(ends, 1);
}

TEST_F(ToolkitServiceTest, does_nothing_for_addresses_that_make_no_sense)
{
    const QString deep(10'000, u'[');
    for (const QString &url :
         {QString(), scheme + u':', recipient + u':', scheme + u":%7"_s, scheme + u":{}"_s, scheme + u":%ff"_s,
          scheme + u':' + deep, scheme + u":{\"_RemoteActionName\":\"runIt\"}"_s})
        service.open(url, Sender::Orbita);
    EXPECT_TRUE(urls.opened.isEmpty() && quits.isEmpty() && runner.scripts.isEmpty() && ends == 0);
}

} // namespace
