// Expected texts are what other tools printed: md5sum, and for escapes and JSON python3's urllib.parse.quote(text,
// safe='') and node's encodeURIComponent(JSON.stringify(...)).

#include "toolkit/Digest.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXRemoteAction.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QString ascii = u"display dialog \"Hi\""_s;
const QString wide = u"say \"Grüße 😀\""_s;

TEST(Digest, IsThatOfMd5sumOverAsManyBytesAsThereAreUnits)
{
    EXPECT_EQ(md5(u""_s), u"d41d8cd98f00b204e9800998ecf8427e"_s);
    EXPECT_EQ(md5(u"abc"_s), u"900150983cd24fb0d6963f7d28e17f72"_s);
    EXPECT_EQ(md5WithSalt(u"c"_s, u"ab"_s), md5(u"abc"_s));
    EXPECT_EQ(md5(u"é"_s), u"d78276f56f8ec8d4f8cca375e4534366"_s) << "printf '\\xc3' | md5sum";
    EXPECT_EQ(scriptAnswer(ascii), u"e3bd61feee7a9243472596a3b3a0ceab"_s);
    EXPECT_EQ(scriptQuestion(ascii), u"e7b4dd24e8c7e4cb2b176d2239db18cc"_s) << "head -c -2";
    EXPECT_EQ(scriptAnswer(wide), u"8d6c509008a6f766710e8196f060e055"_s) << "head -c -4";
    EXPECT_EQ(scriptQuestion(wide), u"cee3beecf9be3d5894478d3854ac051d"_s) << "head -c -6";
}

TEST(Escapes, AreThoseOfUrllibAndAreReversed)
{
    const std::vector<std::pair<QString, QString>> rows{
        {u"azAZ09-._~"_s, u"azAZ09-._~"_s},
        {u"!*'();:@&=+$,/?%#[]"_s, u"%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D"_s},
        {u" \"{}<>\\^`|\n\u007f"_s, u"%20%22%7B%7D%3C%3E%5C%5E%60%7C%0A%7F"_s},
        {u"é €😀"_s, u"%C3%A9%20%E2%82%AC%F0%9F%98%80"_s}};
    for (const auto &[text, escaped] : rows) {
        EXPECT_EQ(stringByAddingEscapeCharacters(text), escaped);
        EXPECT_EQ(stringByRemovingEscapeCharacters(escaped), text);
        EXPECT_EQ(stringByRemovingEscapeCharacters(escaped.toLower()), text.toLower());
    }
    EXPECT_EQ(stringByRemovingEscapeCharacters(u"a+b%2Bé%00"_s), u"a b+é\0"_s);
    for (const char *bad : {"%", "a%4", "%zz", "%4g", "% 41", "%C3", "%E2%82", "%ff", "%ED%A0%80", "%C0%80"})
        EXPECT_FALSE(stringByRemovingEscapeCharacters(QString::fromLatin1(bad))) << bad;
}

TEST(RemoteAction, IsReadAndWrittenAsNodeWritesIt)
{
    VXRemoteAction action(u"executeApplescript"_s);
    action.setValueForParameter(u"a + \"b\"\n\\ é😀/"_s, u"script"_s);
    const QString escaped = u"%7B%22_RemoteActionName%22%3A%22executeApplescript%22%2C%22_RemoteActionParams%22%3A%7B"
                            "%22script%22%3A%22a%20%2B%20%5C%22b%5C%22%5Cn%5C%5C%20%C3%A9%F0%9F%98%80%2F%22%7D%7D"_s;
    EXPECT_EQ(stringByAddingEscapeCharacters(action.jsonRepresentation()), escaped);
    EXPECT_EQ(VXRemoteAction::fromJson(*stringByRemovingEscapeCharacters(escaped)), action);
    const QString fromPython = // json.dumps
        u"{\"_RemoteActionName\": \"executeApplescript\", \"_RemoteActionParams\": "
        "{\"script\": \"a + \\\"b\\\"\\n\\\\ \\u00e9\\ud83d\\ude00/\"}}"_s;
    EXPECT_EQ(VXRemoteAction::fromJson(fromPython), action);
    EXPECT_EQ(VXRemoteAction::fromJson(u"{\"x\":[],\"_RemoteActionName\":\"a\"}"_s), VXRemoteAction(u"a"_s));
}

} // namespace
} // namespace Orbita
