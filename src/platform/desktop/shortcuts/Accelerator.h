#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace Orbita {

/// A key combination as the settings of desktops name it: by what is typed, not by where the key is.
struct Accelerator {
    quint32 keysym = 0;    ///< of the window system, without Shift: "a" for the key A; or keyAboveTab
    quint32 modifiers = 0; ///< HotKeyModifier bits

    friend bool operator==(Accelerator, Accelerator) = default;
};

/// Stands for the key above Tab, whatever it types. No keysym has as many bits.
inline constexpr quint32 keyAboveTab = 0xffffffff;

/// Reads names like "<Super>space", "<Primary><Alt>t" and "Print". Nothing when \a name is none ("disabled" and "" are
/// not), or has a modifier that hot keys of ours lack.
[[nodiscard]] std::optional<Accelerator> acceleratorFromGtk(QStringView name);

/// Reads names like "Meta+Shift+S" and "Alt+F2", in English. Nothing when \a name is none ("none" is not), or several
/// combinations that are to be pressed in a row.
[[nodiscard]] std::optional<Accelerator> acceleratorFromQt(const QString &name);

/// Reads each of \a names and leaves out those that are none.
[[nodiscard]] QList<Accelerator> acceleratorsFromGtk(const QStringList &names);

} // namespace Orbita
