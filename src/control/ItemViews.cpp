#include "control/ItemViews.h"

#include "control/Tint.h"
#include "model/MenuItem.h"
#include "ring/RingItem.h"
#include "settings/SettingValues.h"

namespace Orbita {

std::unique_ptr<RingItem> makeItemView(const MenuItem &item, const QColor &tint, TitleDisplay titles)
{
    auto view = std::make_unique<RingItem>(item.image(), item.title());
    view->setDimmed(!item.isAvailable());
    view->setHighlighted(item.isRunning());
    view->setAlwaysShowTitle(titles == TitleDisplay::Always);
    view->setHighlightColor(highlightColorOn(tint));
    return view;
}

} // namespace Orbita
