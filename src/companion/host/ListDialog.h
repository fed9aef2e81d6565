#pragma once

#include "companion/host/DialogWindow.h"
#include "companion/script/ScriptHost.h"

class QListView;

namespace Orbita {

/// A list, any number of items long, to choose from.
class ListDialog final : public DialogWindow {
    Q_OBJECT
public:
    static constexpr int chosen = 1; ///< the button on the right; 0 is that which cancels

    explicit ListDialog(const ListRequest &request);

    /// In the order of the list.
    [[nodiscard]] QStringList selectedItems() const;

private:
    void select(const QStringList &items);

    QListView *m_list;
};

} // namespace Orbita
