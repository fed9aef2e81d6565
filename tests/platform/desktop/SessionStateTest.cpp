#include "PrivateSession.h"

#include "desktop/harness/FakeLogind.h"
#include "platform/desktop/LogindSessionState.h"
#include "platform/memory/MemorySessionState.h"
#include "support/RowName.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include <memory>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;
using State = SessionState::State;

/// A screen saver that says what a test says.
class FakeScreenSaver final : public QDBusVirtualObject {
public:
    explicit FakeScreenSaver(const QString &service, const QString &path)
        : m_bus(PrivateSession::folders().busAddress()), m_service(service), m_path(path)
    {
        QDBusConnection connection = m_bus.connection();
        EXPECT_TRUE(connection.registerVirtualObject(path, this));
        EXPECT_TRUE(connection.registerService(service));
    }
    void setActive(bool active)
    {
        m_isActive = active;
        auto signal = QDBusMessage::createSignal(m_path, m_service, u"ActiveChanged"_s);
        m_bus.connection().send(signal << active);
    }
    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        return connection.send(message.createReply(m_isActive));
    }

private:
    Bus m_bus;
    QString m_service;
    QString m_path;
    bool m_isActive = false;
};

/// The state by one back end, and what a desktop does to it.
class Backend {
public:
    virtual ~Backend() = default;
    [[nodiscard]] virtual SessionState &state() = 0;
    virtual void setLocked(bool locked) = 0;
    /// False where the back end cannot know of it.
    virtual bool setActive(bool active) = 0;
};

class InMemory final : public Backend {
public:
    SessionState &state() override { return m_state; }
    void setLocked(bool locked) override { m_state.setState(locked ? State::Locked : State::Active); }
    bool setActive(bool active) override
    {
        m_state.setState(active ? State::Active : State::InBackground);
        return true;
    }

private:
    MemorySessionState m_state;
};

class WithLogind final : public Backend {
public:
    WithLogind(FakeLogind::Found found, const char *identifier)
        : m_logind(PrivateSession::folders().busAddress(), found)
    {
        qputenv("XDG_SESSION_ID", identifier);
        m_state.follow(QDBusConnection::sessionBus(), QDBusConnection(QString()));
    }
    ~WithLogind() override { qunsetenv("XDG_SESSION_ID"); }
    SessionState &state() override { return m_state; }
    void setLocked(bool locked) override { m_logind.setLocked(locked); }
    bool setActive(bool active) override
    {
        m_logind.setActive(active);
        return true;
    }

private:
    FakeLogind m_logind;
    LogindSessionState m_state;
};

class WithScreenSaver final : public Backend {
public:
    WithScreenSaver(const QString &service, const QString &path) : m_screenSaver(service, path)
    {
        m_state.follow(QDBusConnection(QString()), QDBusConnection::sessionBus());
    }
    SessionState &state() override { return m_state; }
    void setLocked(bool locked) override { m_screenSaver.setActive(locked); }
    bool setActive(bool) override { return false; }

private:
    FakeScreenSaver m_screenSaver;
    LogindSessionState m_state;
};

struct Row {
    const char *name;
    std::function<std::unique_ptr<Backend>()> make;
};

class SessionStateContract : public testing::TestWithParam<Row> {};

TEST_P(SessionStateContract, tellsOfEachChangeOnce)
{
    const auto backend = GetParam().make();
    SessionState &session = backend->state();
    EXPECT_EQ(session.state(), State::Active);
    std::vector<State> told;
    QObject::connect(&session, &SessionState::changed, &session, [&] { told.push_back(session.state()); });
    std::vector<State> expected{State::Locked, State::Active, State::Locked, State::Active};
    for (const State state : expected) {
        backend->setLocked(state == State::Locked);
        EXPECT_TRUE(eventually([&] { return session.state() == state; }));
        EXPECT_EQ(session.isUsable(), state == State::Active);
    }
    for (const State state : {State::InBackground, State::Active}) {
        if (!backend->setActive(state == State::Active))
            break;
        EXPECT_TRUE(eventually([&] { return session.state() == state; }));
        EXPECT_EQ(session.isUsable(), state == State::Active);
        expected.push_back(state);
    }
    EXPECT_EQ(told, expected);
}

template <typename Type, typename... Arguments>
auto make(Arguments... arguments)
{
    return [=]() -> std::unique_ptr<Backend> { return std::make_unique<Type>(arguments...); };
}

const Row rows[]{
    {"memory", make<InMemory>()},
    {"the session of the process", make<WithLogind>(FakeLogind::Found::ByProcess, "2")},
    {"the session that the environment names", make<WithLogind>(FakeLogind::Found::ByIdentifier, "c1")},
    {"the display although the environment names another", make<WithLogind>(FakeLogind::Found::AsDisplay, "2")},
    {"the display although the environment names a former one", make<WithLogind>(FakeLogind::Found::AsDisplay, "7")},
    {"a screen saver", make<WithScreenSaver>(u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s)},
    {"a screen saver at the older path", make<WithScreenSaver>(u"org.freedesktop.ScreenSaver"_s, u"/ScreenSaver"_s)},
    {"the screen saver of one desktop", make<WithScreenSaver>(u"org.mate.ScreenSaver"_s, u"/org/mate/ScreenSaver"_s)},
};
INSTANTIATE_TEST_SUITE_P(BackEnds, SessionStateContract, testing::ValuesIn(rows), rowName<Row>);

TEST(LogindSessionState, FollowsWhoComesLateGoesAndComesBack)
{
    const QString bus = PrivateSession::folders().busAddress();
    LogindSessionState session;
    session.follow(QDBusConnection::sessionBus(), QDBusConnection::sessionBus());
    const auto becomes = [&](State state) { return eventually([&] { return session.state() == state; }); };
    for (int i = 0; i < 2; ++i) {
        auto logind = std::make_unique<FakeLogind>(bus);
        logind->setLocked(true);
        EXPECT_TRUE(becomes(State::Locked));
        auto screenSaver
            = std::make_unique<FakeScreenSaver>(u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s);
        screenSaver->setActive(true);
        logind->setLocked(false);
        logind->setActive(false);
        EXPECT_TRUE(becomes(State::InBackground));
        logind.reset();
        EXPECT_TRUE(becomes(State::Locked)) << "the screen saver is still there";
        screenSaver.reset();
        EXPECT_TRUE(becomes(State::Active));
    }
}

TEST(LogindSessionState, TakesWhatIsThereAlreadyAndNothingWhereThereIsNoBus)
{
    LogindSessionState alone;
    alone.follow(QDBusConnection(QString()), QDBusConnection(QString()));
    FakeLogind logind(PrivateSession::folders().busAddress(), FakeLogind::Found::AsDisplay);
    logind.setActive(false);
    LogindSessionState session;
    session.follow(QDBusConnection::sessionBus(), QDBusConnection::sessionBus());
    EXPECT_EQ(session.state(), State::Active) << "nothing is waited for";
    EXPECT_TRUE(eventually([&] { return session.state() == State::InBackground; }));
    EXPECT_EQ(alone.state(), State::Active);
}

} // namespace
} // namespace Orbita
