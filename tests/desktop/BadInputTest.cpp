// Item files that nobody would write on purpose, or only somebody who means harm: the ring is shown all the same.

#include "desktop/OrbitaSession.h"
#include "platform/PropertyList.h"

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QVariantMap entry(const QString &className, const QString &name)
{
    return {{u"class"_s, className}, {u"name"_s, name}};
}

void plant(OrbitaSession &session, const QVariantList &entries)
{
    session.desktop().folders().write(session.itemFile(), *PropertyList::encode(entries, PropertyList::Format::Binary));
}

TEST(BadInput, hostileNamesAreShownAndKept)
{
    QString controls;
    for (char16_t control = 1; control < 0x20; ++control)
        controls += QChar(control);
    const QStringList names{QString(1'000'000, u'W'), controls, u"\u202e\u2066txt.exe\u2067\u200f\ufeff\u2028"_s,
                            u"e"_s + QString(10'000, QChar(0x301)), u"%s%n%1<b>&amp;\"'\\"_s};
    QVariantList entries;
    for (const QString &name : names)
        entries.append(entry(u"LinkMenuItem"_s, name));
    // With titles always shown, the names are laid out as well.
    OrbitaSession session({}, {{u"titleDisplay"_s, 1}, {u"showFinder"_s, false}});
    plant(session, entries);
    session.show();
    waitUntil([&] { return session.items().size() == names.size(); }, u"all entries are shown"_s);
    EXPECT_EQ(session.storedNames(), names);
    session.dismiss();
}

TEST(BadInput, ringOfTenThousandEntriesAnswers)
{
    constexpr int count = 10'000;
    QVariantList entries{entry(u"CoreMenuItem"_s, u"Finder"_s)};
    while (entries.size() < count)
        entries.append(entry(u"LinkMenuItem"_s, QString::number(entries.size())));
    OrbitaSession session;
    plant(session, entries);
    session.input().moveTo({640, 400});
    session.orbita(u"show"_s);
    session.dismiss();
    EXPECT_EQ(session.storedNames().size(), count);
}

} // namespace
} // namespace Orbita
