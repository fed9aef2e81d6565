#pragma once

#include "model/ApplicationMenuItem.h"

namespace Orbita {

/// A passing entry for an application that runs. Never stored.
class RunningAppMenuItem final : public ApplicationMenuItem {
public:
    RunningAppMenuItem(RunningApplication application, ItemServices &services);

    [[nodiscard]] const RunningApplication &app() const { return m_app; }
    /// Takes over what became known of the same application since. False when that changes nothing to be seen.
    bool update(const RunningApplication &application);
    /// Whether the icon is drawn in colour instead of in grey. The cached picture is made anew.
    void setRenderColored(bool renderColored);

    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override { return m_app.localizedName; }
    [[nodiscard]] Image image() const override { return m_image; }
    [[nodiscard]] bool isRunning() const override { return true; }
    void open() override { activateOrLaunch(bundle()); }
    /// Only where a bundle is known: an executable alone may be an interpreter, which would run the file.
    [[nodiscard]] bool canOpenPath(const QString &) const override { return !m_app.bundlePath.isEmpty(); }
    /// Does nothing while canOpenPath() is false.
    void openPath(const QString &path) override;
    [[nodiscard]] bool representsRunningApplication(const RunningApplication &application) const override;

private:
    /// What the application is launched by: its bundle, or its executable where no bundle is known.
    [[nodiscard]] QString bundle() const;
    void createImage();

    RunningApplication m_app;
    Image m_image;
    bool m_renderColored = false;
};

} // namespace Orbita
