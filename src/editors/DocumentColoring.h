#pragma once

#include "editors/ScriptColoring.h"

#include <span>

class QTextDocument;

namespace Orbita {

/// The text of \a document with a line feed between its blocks, each character where the document has it.
[[nodiscard]] QString plainText(const QTextDocument &document);

/// Shows \a document, whose plainText() the ranges were made for, in these colours: purple, blue and green on black.
///
/// Nothing that can be undone, and only blocks whose colours change are laid out again. Returns how many those were.
/// What an input method is composing keeps the look that it gave it.
int applyColoring(QTextDocument &document, std::span<const ColorRange> ranges);

} // namespace Orbita
