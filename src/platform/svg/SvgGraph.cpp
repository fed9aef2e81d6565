#include "platform/svg/SvgGraph.h"

#include <algorithm>

namespace Orbita {

bool SvgGraph::open(const Element &element)
{
    const std::size_t index = m_nodes.size();
    if (depth() >= maximumDepth || size() >= maximumElements)
        return false;
    for (const QString &id : element.ids)
        m_ids.insert(id, index);
    if (!m_open.empty())
        m_nodes[m_open.back()].children.push_back(index);
    m_open.push_back(index);
    m_nodes.push_back({{}, element.references, element.cost, {}, 0, false});
    return true;
}

std::optional<qint64> SvgGraph::totalCost(std::size_t index, int depth)
{
    Node &node = m_nodes[index];
    if (node.isBeingCounted || depth + node.height > maximumDepth)
        return std::nullopt;
    if (node.totalCost)
        return node.totalCost;
    std::vector<std::size_t> drawn = node.children;
    for (const QString &reference : node.references) {
        const auto [begin, end] = m_ids.equal_range(reference);
        drawn.insert(drawn.end(), begin, end);
    }

    node.isBeingCounted = true;
    qint64 sum = node.cost;
    for (const std::size_t part : drawn) {
        const auto cost = totalCost(part, depth + 1);
        if (!cost || (sum += *cost) > maximumCost)
            return std::nullopt;
        node.height = std::max(node.height, m_nodes[part].height + 1);
    }
    node.isBeingCounted = false;
    node.totalCost = sum;
    return sum;
}

} // namespace Orbita
