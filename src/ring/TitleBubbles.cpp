#include "ring/TitleBubbles.h"

#include "ring/TitleBubble.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr size_t mostBubbles = 64;

} // namespace

TitleBubbles::TitleBubbles(Stage &stage) : m_stage(stage) {}

TitleBubbles::~TitleBubbles() = default;

void TitleBubbles::show(const std::vector<Title> &titles, QWidget *owner)
{
    const size_t count = std::min(titles.size(), mostBubbles);
    while (m_bubbles.size() < count)
        m_bubbles.push_back(std::make_unique<TitleBubble>(m_stage));
    for (size_t i = 0; i < count; ++i)
        m_bubbles[i]->showTitle(titles[i].text, titles[i].item, owner);
    for (size_t i = count; i < m_bubbles.size(); ++i)
        m_bubbles[i]->hide();
}

size_t TitleBubbles::visibleCount() const
{
    return size_t(
        std::count_if(m_bubbles.begin(), m_bubbles.end(), [](const auto &bubble) { return bubble->isVisible(); }));
}

} // namespace Orbita
