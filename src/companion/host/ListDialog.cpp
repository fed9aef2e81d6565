#include "companion/host/ListDialog.h"

#include <QListView>
#include <QPushButton>
#include <QStringListModel>

#include <algorithm>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

QString orPreset(const QString &text, const QString &preset)
{
    return text.isEmpty() ? preset : text;
}

} // namespace

ListDialog::ListDialog(const ListRequest &request) : DialogWindow(request.title), m_list(new QListView)
{
    addText(orPreset(request.prompt, u"Please make your selection:"_s));
    m_list->setModel(new QStringListModel(request.items, this));
    m_list->setObjectName(u"items"_s);
    m_list->setAccessibleName(orPreset(request.prompt, u"Items"_s));
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSelectionMode(request.allowsMultiple ? QAbstractItemView::ExtendedSelection
                                                    : QAbstractItemView::SingleSelection);
    addContent(m_list);
    m_list->ensurePolished(); // the rows are as high as the style makes them
    const int shownRows = int(std::clamp<qsizetype>(request.items.size(), 4, 10));
    const int rowHeight = std::max(m_list->sizeHintForRow(0), fontMetrics().height());
    m_list->setFixedSize(contentWidth, shownRows * rowHeight + 2 * m_list->frameWidth() + 8);

    setCancelButton(addButton(orPreset(request.cancelButtonName, u"Cancel"_s)));
    QPushButton &ok = addButton(orPreset(request.okButtonName, u"OK"_s));
    setDefaultButton(ok);
    select(request.allowsMultiple ? request.defaultItems : request.defaultItems.mid(0, 1));
    const auto follow = [this, &ok, allowsEmpty = request.allowsEmpty] {
        ok.setEnabled(allowsEmpty || m_list->selectionModel()->hasSelection());
    };
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, follow);
    connect(m_list, &QListView::doubleClicked, &ok, &QPushButton::click);
    follow();
    m_list->setFocus();
}

void ListDialog::select(const QStringList &items)
{
    const QAbstractItemModel &model = *m_list->model();
    for (const QString &item : items) {
        const QModelIndexList found
            = model.match(model.index(0, 0), Qt::EditRole, item, 1, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (found.isEmpty())
            continue;
        m_list->selectionModel()->setCurrentIndex(found.first(), QItemSelectionModel::Select);
        m_list->scrollTo(found.first());
    }
}

QStringList ListDialog::selectedItems() const
{
    QModelIndexList rows = m_list->selectionModel()->selectedIndexes();
    std::ranges::sort(rows, {}, &QModelIndex::row);
    QStringList items;
    for (const QModelIndex &row : rows)
        items << row.data(Qt::EditRole).toString();
    return items;
}

} // namespace Orbita
