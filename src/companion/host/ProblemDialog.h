#pragma once

#include "companion/host/DialogWindow.h"

namespace Orbita {

struct ProblemReport;

/// Says why a script was stopped, with the line that it was stopped in.
class ProblemDialog final : public DialogWindow {
    Q_OBJECT
public:
    explicit ProblemDialog(const ProblemReport &report);
};

} // namespace Orbita
