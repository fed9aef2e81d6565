#pragma once

#include <memory>

class QColor;

namespace Orbita {

class MenuItem;
class RingItem;
enum class TitleDisplay;

/// What \a item looks like on a disc of \a tint: its picture, dimmed while it cannot be opened, and title, a dot when
/// it runs, and its caption where titles are always shown.
[[nodiscard]] std::unique_ptr<RingItem> makeItemView(const MenuItem &item, const QColor &tint, TitleDisplay titles);

} // namespace Orbita
