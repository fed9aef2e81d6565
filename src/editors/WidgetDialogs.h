#pragma once

#include "platform/Dialogs.h"

namespace Orbita {

class Stage;

/// Asks in windows of its own that stand above the ring and its sheets and have the keyboard.
///
/// When the program ends meanwhile, an alert is answered by its last button and a file is not chosen.
class WidgetDialogs final : public Dialogs {
public:
    /// \a stage outlives the dialogs.
    explicit WidgetDialogs(Stage &stage) : m_stage(stage) {}

    [[nodiscard]] int runAlert(const Alert &alert) override;
    [[nodiscard]] std::optional<QString> chooseFile(const FileRequest &request) override;

private:
    Stage &m_stage;
};

} // namespace Orbita
