#include "platform/x11/X11HotKeyService.h"

#include "platform/Log.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Orbita {

X11HotKeyService::X11HotKeyService(X11Connection &connection, X11RawInput &input, QObject *parent)
    : HotKeyService(parent), m_connection(connection), m_keysDown(connection, input)
{
    using namespace std::chrono_literals;
    m_keyboardSettles.setSingleShot(true);
    m_keyboardSettles.setInterval(50ms); // one change of the layout arrives as several notices
    connect(&m_keyboardSettles, &QTimer::timeout, this, &X11HotKeyService::followKeyboard);
    connect(&connection, &X11Connection::keyboardChanged, this, [this] {
        if (!m_hotKeys.empty())
            m_keyboardSettles.start();
    });
    connect(&connection, &X11Connection::keyPressed, this, [this](quint8 key, quint16 state, xcb_timestamp_t time) {
        hearThroughGrab({key, time}, state);
    });
    connect(&connection, &X11Connection::keyReleased, this, [this](quint8 key, quint16, xcb_timestamp_t time) {
        m_lastRelease = {key, time};
    });
    connect(&m_keysDown, &X11KeysDown::pressed, this, &X11HotKeyService::hearRaw);
    connect(&m_keysDown, &X11KeysDown::released, this, [this](quint8 key) {
        if (key == m_toldKey)
            m_toldKey.reset();
    });
}

X11HotKeyService::~X11HotKeyService()
{
    for (const HotKey &hotKey : m_hotKeys) {
        if (hotKey.grab)
            giveBack(*hotKey.grab);
    }
}

Result<void, GrabError> X11HotKeyService::grab(HotKeyId id, KeyCombination combination)
{
    auto keyboard = X11Keyboard::read(m_connection);
    if (!keyboard)
        return Failure(GrabError::NotSupported);
    const auto wanted = keyboard->find(combination);
    if (!wanted)
        return Failure(GrabError::NoSuchKey);
    if (isOurs(*wanted)) // the server would give it to us again
        return Failure(GrabError::TakenByOther);
    const auto taken = take(*wanted);
    if (taken) {
        m_hotKeys.push_back({id, combination, wanted});
        m_keyboard = std::move(keyboard);
        m_keysDown.follow();
    }
    return taken;
}

void X11HotKeyService::release(HotKeyId id)
{
    const auto found
        = std::find_if(m_hotKeys.begin(), m_hotKeys.end(), [id](const HotKey &one) { return one.id == id; });
    if (found == m_hotKeys.end())
        return;
    if (found->grab)
        giveBack(*found->grab);
    m_hotKeys.erase(found);
    if (m_hotKeys.empty()) {
        m_keysDown.stop();
        m_toldKey.reset();
        m_keyboard.reset();
    }
}

bool X11HotKeyService::isTakenByOther(KeyCombination combination)
{
    const auto keyboard = X11Keyboard::read(m_connection);
    const auto wanted = keyboard ? keyboard->find(combination) : std::nullopt;
    if (!wanted || isOurs(*wanted))
        return false;
    const auto taken = take(*wanted);
    if (taken)
        giveBack(*wanted);
    return !taken && taken.error() == GrabError::TakenByOther;
}

bool X11HotKeyService::isOurs(const X11KeyGrab &grab) const
{
    return std::any_of(m_hotKeys.begin(), m_hotKeys.end(),
                       [&](const HotKey &hotKey) { return hotKey.grab && hotKey.grab->isSameAs(grab); });
}

Result<void, GrabError> X11HotKeyService::take(const X11KeyGrab &grab)
{
    std::vector<xcb_void_cookie_t> requests;
    for (const quint16 modifiers : grab.variants()) {
        requests.push_back(xcb_grab_key_checked(m_connection.xcb(), 1, m_connection.root(), modifiers, grab.key,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    const auto given = std::count_if(requests.begin(), requests.end(),
                                     [this](xcb_void_cookie_t request) { return m_connection.succeeded(request); });
    if (std::size_t(given) == requests.size())
        return {};
    if (xcb_connection_has_error(m_connection.xcb()) != 0)
        return Failure(GrabError::NotSupported);
    giveBack(grab);
    return Failure(GrabError::TakenByOther);
}

void X11HotKeyService::giveBack(const X11KeyGrab &grab)
{
    for (const quint16 modifiers : grab.variants())
        xcb_ungrab_key(m_connection.xcb(), grab.key, m_connection.root(), modifiers);
    m_connection.flush();
}

void X11HotKeyService::followKeyboard()
{
    auto keyboard = X11Keyboard::read(m_connection);
    if (!keyboard || m_hotKeys.empty())
        return;
    m_keyboard = std::move(keyboard);
    std::vector<std::optional<X11KeyGrab>> wanted;
    // All that moves is given back before any is taken: one hot key may move to where another one was.
    for (HotKey &hotKey : m_hotKeys) {
        wanted.push_back(m_keyboard->find(hotKey.combination));
        if (hotKey.grab && hotKey.grab != wanted.back())
            giveBack(*std::exchange(hotKey.grab, {}));
    }
    for (std::size_t i = 0; i < m_hotKeys.size(); ++i) {
        if (!m_hotKeys[i].grab)
            retake(m_hotKeys[i], wanted[i]);
    }
}

void X11HotKeyService::retake(HotKey &hotKey, const std::optional<X11KeyGrab> &grab)
{
    if (grab && !isOurs(*grab) && take(*grab)) {
        hotKey.grab = grab;
        hotKey.missReported = false;
    } else if (!std::exchange(hotKey.missReported, true)) {
        qCWarning(lcPlatform, "The hot key with key %u and modifiers 0x%x is out of reach with the present keyboard",
                  hotKey.combination.keyCode, hotKey.combination.modifiers);
    }
}

void X11HotKeyService::hearThroughGrab(Stroke press, quint16 state)
{
    // A key that is held repeats as a release and a press at the same time. What was pressed for everybody was told.
    if (press == m_lastRelease || press.key == m_toldKey)
        return;
    if (const auto id = hotKeyOf(press.key, state))
        Q_EMIT pressed(*id);
}

void X11HotKeyService::hearRaw(quint8 key)
{
    const bool isWanted
        = std::ranges::any_of(m_hotKeys, [key](const HotKey &one) { return one.grab && one.grab->key == key; });
    if (!isWanted || !m_keyboard)
        return;
    const auto id = hotKeyOf(key, m_keyboard->modifiersOf(m_keysDown.keys()));
    // The grab is told of a key that has to wait once it counts.
    if (!id || !m_keysDown.countAtOnce())
        return;
    m_toldKey = key;
    Q_EMIT pressed(*id);
}

std::optional<HotKeyId> X11HotKeyService::hotKeyOf(quint8 key, quint16 modifiers) const
{
    const auto found = std::find_if(m_hotKeys.begin(), m_hotKeys.end(), [=](const HotKey &hotKey) {
        return hotKey.grab && hotKey.grab->matches(key, modifiers);
    });
    return found == m_hotKeys.end() ? std::nullopt : std::optional(found->id);
}

} // namespace Orbita
