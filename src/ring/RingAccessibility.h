#pragma once

namespace Orbita {

/// Exposes rings with their items, and close buttons, to assistive technology.
///
/// Call once, after the application object was made: the toolkit's own description would win before that.
void installRingAccessibility();

} // namespace Orbita
