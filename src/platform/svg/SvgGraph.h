#pragma once

#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace Orbita {

/// The elements of an SVG document as a graph: what drawing one draws in turn, within it or by reference.
class SvgGraph {
public:
    static constexpr int maximumDepth = 200; ///< elements drawn within one another, through references as well
    static constexpr qint64 maximumElements = 200'000;
    static constexpr qint64 maximumCost = 400'000;

    struct Element {
        QStringList ids;
        QStringList references; ///< to ids
        qint64 cost = 1;        ///< of drawing it alone; an ordinary element costs 1
    };

    /// Adds \a element within the one that was opened last and not closed. False when there are too many, or too deep.
    [[nodiscard]] bool open(const Element &element);
    /// Closes the element that was opened last.
    void close() { m_open.pop_back(); }
    /// Adds to the cost of the element that was opened last and not closed.
    void addCost(qint64 cost) { m_nodes[m_open.back()].cost += cost; }

    [[nodiscard]] std::size_t depth() const { return m_open.size(); }
    [[nodiscard]] qint64 size() const { return qint64(m_nodes.size()); }

    /// What drawing the whole document costs, each time that an element is drawn counted; nothing when that is more
    /// than maximumCost, too deep or without end.
    [[nodiscard]] std::optional<qint64> totalCost() { return totalCost(0, 0); }

private:
    struct Node {
        std::vector<std::size_t> children;
        QStringList references;
        qint64 cost = 0;
        std::optional<qint64> totalCost; ///< once it is known
        int height = 0;                  ///< levels below, once the total cost is known
        bool isBeingCounted = false;
    };

    std::optional<qint64> totalCost(std::size_t index, int depth);

    std::vector<Node> m_nodes;
    std::vector<std::size_t> m_open;
    QMultiHash<QString, std::size_t> m_ids; ///< renderers differ in which one of several they take
};

} // namespace Orbita
