#include "ForeignClient.h"

#include "desktop/harness/Bus.h"
#include "desktop/harness/SessionFolders.h"
#include "platform/desktop/PlasmaHotKeyService.h"
#include "platform/memory/MemoryKeyboardLayout.h"

#include <QDBusMetaType>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(PlasmaHotKeyService, takesHotKeysFromTheServiceOfPlasma)
{
    const VirtualDisplay display;
    const SessionFolders folders;
    const SessionProcesses processes(folders);
    auto environment = folders.environment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display.name()));
    const auto daemon = startBusDaemon(folders.busAddress(), environment);
    const Bus bus(folders.busAddress());
    const ForeignClient client(display.name());
    MemoryKeyboardLayout layout;
    layout.setTexts({{16, QStringLiteral("y")}});
    PlasmaHotKeyService service(bus.connection(), layout);
    constexpr KeyCombination superSpace{49, CommandKey};
    const auto grab = [&](quint32 id, KeyCombination combination) {
        const auto result = service.grab({1, id}, combination);
        return result ? std::nullopt : std::optional(result.error());
    };
    std::vector<quint32> heard;
    QObject::connect(&service, &HotKeyService::pressed, &service, [&](HotKeyId id) { heard.push_back(id.id); });
    const auto press = [&](const QString &first, const QString &second) {
        heard.clear();
        client.input.tap(first);
        client.input.tap(second);
        return eventually([&] { return !heard.empty() && heard.back() == 1; });
    };
    const auto f7 = QStringLiteral("F7"); // the hot key 1, after which nothing that was pressed before it is heard

    EXPECT_EQ(grab(1, {98, 0}), GrabError::NotSupported);
    const auto start = [&] {
        auto program = std::make_unique<Program>(QStringLiteral("kglobalaccel5"), QStringList(), environment);
        bus.waitForName(QStringLiteral("org.kde.kglobalaccel"));
        return program;
    };
    auto plasma = start();
    const QStringList action{QStringLiteral("other"), QStringLiteral("it"), QStringLiteral("O"), QStringLiteral("I")};
    const auto call = [&](const QString &method, const QVariantList &arguments) {
        bus.call(QStringLiteral("org.kde.kglobalaccel"), QStringLiteral("/kglobalaccel"),
                 QStringLiteral("org.kde.KGlobalAccel"), method, arguments);
    };
    call(QStringLiteral("doRegister"), {action});
    call(QStringLiteral("setShortcut"),
         {action, QVariant::fromValue(QList<int>{int(Qt::META) | int(Qt::Key_Space)}), 6U});
    EXPECT_EQ(grab(2, superSpace), GrabError::TakenByOther);
    EXPECT_TRUE(service.isTakenByOther(superSpace));
    EXPECT_EQ(grab(3, {97, 0}), std::nullopt);
    EXPECT_EQ(grab(4, {97, 0}), GrabError::TakenByOther);
    EXPECT_FALSE(service.isTakenByOther({97, 0}));
    EXPECT_EQ(grab(5, {16, ControlKey}), std::nullopt);
    EXPECT_EQ(grab(1, {98, 0}), std::nullopt);

    EXPECT_TRUE(press(QStringLiteral("F6"), f7));
    EXPECT_EQ(heard, (std::vector<quint32>{3, 1}));
    service.release({1, 3});
    EXPECT_TRUE(press(QStringLiteral("F6"), f7));
    EXPECT_EQ(heard, (std::vector<quint32>{1}));
    layout.setTexts({{16, QStringLiteral("z")}});
    EXPECT_TRUE(press(QStringLiteral("Control+z"), f7));
    EXPECT_EQ(heard, (std::vector<quint32>{5, 1}));
    plasma.reset();
    plasma = start();
    heard.clear();
    EXPECT_TRUE(eventually([&] {
        client.input.tap(QStringLiteral("Control+z"));
        return !heard.empty() && heard.front() == 5;
    }));
}

} // namespace
} // namespace Orbita
