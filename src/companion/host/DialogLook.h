#pragma once

#include <QPalette>
#include <QString>

class QWidget;

namespace Orbita {

/// Whether the user asked the desktop for dark windows.
[[nodiscard]] bool prefersDarkWindows();

/// The colours of a dialog: those of the desktop where it gives some, else a light or a dark set of our own.
/// \a ofToolkit are the colours that the toolkit has where no desktop gives it others.
[[nodiscard]] QPalette dialogPalette(const QPalette &current, const QPalette &ofToolkit, bool prefersDark);

/// How the parts of a dialog are drawn in the colours of \a palette. Texts named "quiet" stand back, buttons with the
/// property "isDefault" stand out.
[[nodiscard]] QString dialogStyleSheet(const QPalette &palette);

/// Gives the program the colours above, once; afterwards they are the current ones.
void useDialogPalette();

/// Gives the program its colours and \a dialog the drawing above.
void applyDialogLook(QWidget &dialog);

} // namespace Orbita
