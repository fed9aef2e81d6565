#include "toolkit/VXSchemeCommunicationCenter.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlHandler.h"
#include "support/RowName.h"
#include "toolkit/EscapeCharacters.h"

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QString idKey = u"_RemoteActionResponseId"_s;
const QString tooDeep
    = u"{\"_RemoteActionName\":\"ask\",\"x\":"_s + QString(10'000, u'[') + QString(10'000, u']') + u'}';

/// Two programs, each of which sends the other what it opens.
class Exchange : public testing::Test {
protected:
    Exchange()
    {
        here.setUrlSchemeForReceiving(u"here"_s);
        there.setUrlSchemeForReceiving(u"there"_s);
        hereUrls.schemes = {u"there"_s};
        here.setUrlSchemeOfRecipient(u"there"_s);
        there.setUrlSchemeOfRecipient(u"here"_s);
        there.addObserver(
            this, [this](const VXRemoteAction &action) { return answer(action); }, u"ask"_s);
        here.addObserver(
            this, [this](const VXRemoteAction &action) { return answer(action); }, u"told"_s);
    }
    std::optional<VXRemoteAction> answer(const VXRemoteAction &action)
    {
        observed.append(action.name());
        return action.name() == u"ask" ? std::optional(VXRemoteAction(u"told"_s)) : std::nullopt;
    }
    /// Sends "ask" and returns the address with which it is answered.
    QString askAndAnswer()
    {
        here.sendAction(VXRemoteAction(u"ask"_s), [this](const VXRemoteAction *response) {
            responses.append(response ? response->name() : u"nothing"_s);
        });
        EXPECT_TRUE(there.handleUrlString(hereUrls.opened.last()));
        return thereUrls.opened.value(0);
    }

    MemoryUrlHandler hereUrls, thereUrls;
    MemoryScheduler scheduler;
    VXSchemeCommunicationCenter here{hereUrls, scheduler}, there{thereUrls, scheduler};
    QStringList observed, responses;
};

TEST_F(Exchange, StartsTheOtherProgramOnlyWhereItIsInstalled)
{
    EXPECT_EQ(hereUrls.opened, QStringList(u"there:"_s));
    EXPECT_TRUE(thereUrls.opened.isEmpty()) << "nothing is registered for it";
    EXPECT_TRUE(there.handleUrlString(hereUrls.opened.last()));
    EXPECT_TRUE(observed.isEmpty());
}

TEST_F(Exchange, AnAnswerGoesToItsHandlerOnceAndToTheObserversWhenItIsReplayedOrForged)
{
    const QString told = askAndAnswer();
    EXPECT_TRUE(here.handleUrlString(told, MayAnswer::No));
    EXPECT_TRUE(responses.isEmpty());
    EXPECT_EQ(observed, (QStringList{u"ask"_s, u"told"_s}));
    EXPECT_TRUE(here.handleUrlString(told));
    EXPECT_EQ(responses, QStringList(u"told"_s));
    EXPECT_EQ(observed.size(), 2);
    EXPECT_TRUE(here.handleUrlString(told));
    scheduler.advance(std::chrono::minutes(1));
    EXPECT_EQ(responses.size(), 1);
    EXPECT_EQ(observed, (QStringList{u"ask"_s, u"told"_s, u"told"_s}));
}

TEST_F(Exchange, ARequestIsGivenUpAfterTenSeconds)
{
    here.sendAction(VXRemoteAction(u"ask"_s), [](const auto *) { throw std::runtime_error("is logged"); });
    const QString told = askAndAnswer();
    scheduler.advance(std::chrono::milliseconds(9'999));
    EXPECT_TRUE(responses.isEmpty());
    scheduler.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(responses, QStringList(u"nothing"_s));
    EXPECT_TRUE(here.handleUrlString(told));
    EXPECT_EQ(responses.size(), 1);
    EXPECT_EQ(observed, (QStringList{u"ask"_s, u"told"_s}));
}

TEST_F(Exchange, AReplyHasTheIdOfItsRequestIfThatHasOne)
{
    here.sendAction(VXRemoteAction(u"ask"_s));
    EXPECT_TRUE(there.handleUrlString(hereUrls.opened.last()));
    EXPECT_EQ(thereUrls.opened.last(),
              u"here:"_s + stringByAddingEscapeCharacters(VXRemoteAction(u"told"_s).jsonRepresentation()));
    VXRemoteAction told(u"told"_s);
    told.setValueForParameter(u"7"_s, idKey);
    EXPECT_TRUE(there.handleUrlString(
        u"there:{\"_RemoteActionName\":\"ask\",\"_RemoteActionParams\":{\"%1\":\"7\"}}"_s.arg(idKey)));
    EXPECT_EQ(thereUrls.opened.last(), u"here:"_s + stringByAddingEscapeCharacters(told.jsonRepresentation()));
}

TEST_F(Exchange, EveryObserverOfANameIsToldInOrderUntilItIsRemoved)
{
    const int other = 0;
    for (const QString &name : {u"ask"_s, u"x"_s})
        there.addObserver(
            &other, [&](const VXRemoteAction &) { return observed.append(u"other"_s), std::nullopt; }, name);
    for (const QString &name : {u"ask"_s, u"x"_s, u"unheard"_s})
        EXPECT_TRUE(there.handleUrlString(u"there:{\"_RemoteActionName\":\"%1\"}"_s.arg(name)));
    EXPECT_EQ(observed, (QStringList{u"ask"_s, u"other"_s, u"other"_s}));
    there.removeObserver(&other, u"ask"_s);
    there.removeObserver(this);
    for (const QString &name : {u"ask"_s, u"x"_s})
        EXPECT_TRUE(there.handleUrlString(u"there:{\"_RemoteActionName\":\"%1\"}"_s.arg(name)));
    EXPECT_EQ(observed.size(), 4);
}

struct Incoming {
    const char *name;
    QString url;
    bool isTaken;
    int observed = 0;
};

class IncomingUrl : public Exchange, public testing::WithParamInterface<Incoming> {};

TEST_P(IncomingUrl, isTakenOrRefused)
{
    EXPECT_EQ(there.handleUrlString(GetParam().url), GetParam().isTaken);
    EXPECT_EQ(observed.size(), GetParam().observed);
}

const QString asked = u"{%22_RemoteActionName%22:%22ask%22}"_s;
const Incoming urls[]{
    {"none at all", {}, false},
    {"the scheme alone", u"there:"_s, true},
    {"the scheme without a colon", u"there"_s, false},
    {"the scheme behind a blank", u" there:"_s + asked, false},
    {"another scheme", u"here:"_s + asked, false},
    {"another scheme round ours", u"here:there:"_s + asked, false},
    {"a longer scheme", u"thereabouts:"_s + asked, false},
    {"doubly prefixed", u"there:there:"_s + asked, true, 1},
    {"truncated JSON", u"there:"_s + asked.chopped(1), false},
    {"a truncated escape", u"there:"_s + asked + u"%2"_s, false},
    {"an invalid escape", u"there:%GG"_s + asked, false},
    {"invalid UTF 8", u"there:{%22_RemoteActionName%22:%22ask%22,%22x%22:%22%FF%22}"_s, false},
    {"a list", u"there:[]"_s, false},
    {"no name", u"there:{}"_s, false},
    {"a name that is a number", u"there:{%22_RemoteActionName%22:1}"_s, false},
    {"parameters that are a list", u"there:{%22_RemoteActionName%22:%22ask%22,%22_RemoteActionParams%22:[]}"_s, false},
    {"a parameter that is a number",
     u"there:{%22_RemoteActionName%22:%22ask%22,%22_RemoteActionParams%22:{%22a%22:1}}"_s, false},
    {"10000 levels of nesting", u"there:"_s + tooDeep, false},
    {"1 MiB of JSON",
     u"there:{%22_RemoteActionName%22:%22ask%22,%22x%22:%22"_s + QString(1024 * 1024, u'a') + u"%22}"_s, true, 1},
    {"1 MiB of blanks", u"there:"_s + QString(1024 * 1024, u'+') + asked, true, 1},
    {"17 MiB", u"there:"_s + QString(17 * 1024 * 1024, u'+') + asked, false},
};
INSTANTIATE_TEST_SUITE_P(Urls, IncomingUrl, testing::ValuesIn(urls), rowName<Incoming>);

TEST_F(Exchange, AFloodIsAnsweredWhole)
{
    for (int i = 0; i < 10'000; ++i) {
        EXPECT_TRUE(here.handleUrlString(askAndAnswer()));
        thereUrls.opened.clear();
    }
    EXPECT_EQ(responses.count(u"told"_s), 10'000);
    scheduler.advance(std::chrono::minutes(1));
    EXPECT_EQ(responses.size(), 10'000);
}

} // namespace
} // namespace Orbita
