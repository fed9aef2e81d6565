#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace Orbita {

/// What is about to be started, for the window manager's feedback.
struct Launchee {
    QString name;        ///< what the user calls it
    QString executable;  ///< the program that runs
    QString desktopFile; ///< absolute path; may be empty
    QString windowClass; ///< what its windows will call themselves; may be empty
    QString icon;        ///< icon name or path; may be empty
};

/// One announced start. Going away does not end it: the window manager and the application do that between them.
class StartupSequence {
public:
    virtual ~StartupSequence() = default;

    /// The startup-notification id: the child's DESKTOP_STARTUP_ID and activation token. Never empty.
    [[nodiscard]] virtual QByteArray id() const = 0;
    /// Takes the announcement back because nothing was started.
    virtual void cancel() = 0;
};

/// Lets started applications come up in front although another program has the focus. One per windowing system.
class StartupNotifier {
public:
    virtual ~StartupNotifier() = default;

    /// Announces a start to the window manager, which then shows feedback and gives the first window the focus.
    /// Null when the windowing system is out of reach.
    [[nodiscard]] virtual std::unique_ptr<StartupSequence> begin(const Launchee &launchee) = 0;
    /// An activation token that only proves when the user acted, for what does not end announcements.
    /// Empty when the windowing system is out of reach.
    [[nodiscard]] virtual QByteArray token() = 0;
};

/// For a session without such a service: nothing is announced and there are no tokens.
class NoStartupNotifier final : public StartupNotifier {
public:
    [[nodiscard]] std::unique_ptr<StartupSequence> begin(const Launchee &) override { return nullptr; }
    [[nodiscard]] QByteArray token() override { return {}; }
};

} // namespace Orbita
