#include "platform/Glib.h"

#include "platform/desktop/FreedesktopAppearance.h"

#include "platform/desktop/AppearanceRules.h"
#include "platform/desktop/DesktopSettings.h"

#include <QFile>
#include <QMetaMethod>

#include <algorithm>
#include <cmath>
#include <functional>

namespace Orbita {

namespace {

std::optional<double> animationFactor(const QSettings &kdeGlobals)
{
    bool isNumber = false;
    const double factor = kdeGlobals.value(QStringLiteral("KDE/AnimationDurationFactor")).toDouble(&isNumber);
    return isNumber && std::isfinite(factor) ? std::optional(factor) : std::nullopt;
}

/// KDE writes colours as "red,green,blue", which QSettings takes for a list.
std::optional<QColor> panelColor(const QSettings &kdeGlobals)
{
    const QStringList parts = kdeGlobals.value(QStringLiteral("Colors:Window/BackgroundNormal")).toStringList();
    if (parts.size() < 3)
        return std::nullopt;
    const QColor color(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
    return color.isValid() ? std::optional(color) : std::nullopt;
}

} // namespace

/// The stores, and notices of their changes, which arrive through the main loop.
class FreedesktopAppearance::Sources {
public:
    explicit Sources(std::function<void()> changed)
        : m_changed(std::move(changed)), m_interface(openInterfaceSettings())
    {
        if (m_interface)
            g_signal_connect_swapped(m_interface.get(), "changed", G_CALLBACK(notify), this);
        const GObjectPointer<GFile> file(g_file_new_for_path(QFile::encodeName(kdeGlobalsPath()).constData()));
        m_kdeMonitor.reset(g_file_monitor_file(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
        if (m_kdeMonitor)
            g_signal_connect_swapped(m_kdeMonitor.get(), "changed", G_CALLBACK(notify), this);
    }
    ~Sources()
    {
        if (m_interface)
            g_signal_handlers_disconnect_by_data(m_interface.get(), this);
        if (m_kdeMonitor)
            g_signal_handlers_disconnect_by_data(m_kdeMonitor.get(), this);
    }
    Q_DISABLE_COPY_MOVE(Sources)

    [[nodiscard]] AppearanceHints read() const
    {
        AppearanceHints hints;
        hints.desktops = currentDesktops();
        if (has("enable-animations"))
            hints.areAnimationsEnabled = g_settings_get_boolean(m_interface.get(), "enable-animations") != FALSE;
        if (has("color-scheme")) {
            const GlibPointer<char> scheme(g_settings_get_string(m_interface.get(), "color-scheme"));
            hints.prefersDark = qstrcmp(scheme.get(), "prefer-dark") == 0;
        }
        if (const auto kdeGlobals = openSettingsFile(kdeGlobalsPath())) {
            hints.animationFactor = animationFactor(*kdeGlobals);
            hints.panelColor = panelColor(*kdeGlobals);
        }
        return hints;
    }

private:
    static void notify(Sources *self) { self->m_changed(); }
    [[nodiscard]] bool has(const char *key) const { return m_interface && hasKey(m_interface.get(), key); }

    std::function<void()> m_changed;
    GObjectPointer<GSettings> m_interface;
    GObjectPointer<GFileMonitor> m_kdeMonitor;
};

struct FreedesktopAppearance::Answers {
    bool motionReduced;
    bool darkPanel;
};

FreedesktopAppearance::FreedesktopAppearance(QObject *parent) : DesktopAppearance(parent) {}

FreedesktopAppearance::~FreedesktopAppearance() = default;

const FreedesktopAppearance::Answers &FreedesktopAppearance::answers() const
{
    if (!m_answers) {
        // The stores live as long as this object, and only a change of theirs writes to it.
        auto *self = const_cast<FreedesktopAppearance *>(this);
        m_sources = std::make_unique<Sources>([self] { self->update(); });
        const AppearanceHints hints = m_sources->read();
        m_answers = std::make_unique<Answers>(Answers{Orbita::isMotionReduced(hints), Orbita::hasDarkPanel(hints)});
    }
    return *m_answers;
}

bool FreedesktopAppearance::isMotionReduced() const
{
    return answers().motionReduced;
}

bool FreedesktopAppearance::hasDarkPanel() const
{
    return answers().darkPanel;
}

void FreedesktopAppearance::connectNotify(const QMetaMethod &)
{
    // Who wants to hear of changes needs the stores watched, whether or not the present state is asked for.
    QMetaObject::invokeMethod(
        this, [this] { answers(); }, Qt::QueuedConnection);
}

void FreedesktopAppearance::update()
{
    const AppearanceHints hints = m_sources->read();
    const Answers before = *m_answers;
    *m_answers = {Orbita::isMotionReduced(hints), Orbita::hasDarkPanel(hints)};
    if (m_answers->motionReduced != before.motionReduced)
        Q_EMIT motionReducedChanged(m_answers->motionReduced);
    if (m_answers->darkPanel != before.darkPanel)
        Q_EMIT darkPanelChanged(m_answers->darkPanel);
}

} // namespace Orbita
