#include "companion/script/Value.h"

#include <algorithm>

namespace Orbita {

struct ValueList::Data {
    std::vector<Value> items;
    int depth = 1;
    qint64 weight = 0;

    void count(const Value &value)
    {
        depth = std::max(depth, 1 + nestingDepth(value));
        weight += Orbita::weight(value);
    }
};

ValueList::ValueList(std::vector<Value> items) : m_data(std::make_shared<Data>())
{
    m_data->items = std::move(items);
    for (const Value &value : m_data->items)
        m_data->count(value);
}

qsizetype ValueList::size() const
{
    return m_data ? qsizetype(m_data->items.size()) : 0;
}

const Value &ValueList::at(qsizetype index) const
{
    Q_ASSERT(index >= 0 && index < size());
    return m_data->items[size_t(index)];
}

const std::vector<Value> &ValueList::items() const &
{
    static const std::vector<Value> none;
    return m_data ? m_data->items : none;
}

void ValueList::insert(qsizetype index, Value value)
{
    Data &data = detach();
    data.count(value);
    data.items.insert(data.items.begin() + index, std::move(value));
}

void ValueList::replace(qsizetype index, Value value)
{
    Data &data = detach();
    Value &place = data.items[size_t(index)];
    data.weight -= Orbita::weight(place);
    data.count(value);
    place = std::move(value);
}

int ValueList::depth() const
{
    return m_data ? m_data->depth : 1;
}

qint64 ValueList::weight() const
{
    return m_data ? m_data->weight : 0;
}

ValueList::Data &ValueList::detach()
{
    if (!m_data)
        m_data = std::make_shared<Data>();
    else if (m_data.use_count() > 1)
        m_data = std::make_shared<Data>(*m_data);
    return *m_data;
}

const Value *ValueRecord::find(const QString &name) const
{
    const qsizetype index = names.indexOf(name);
    return index < 0 ? nullptr : &values.at(index);
}

int nestingDepth(const Value &value)
{
    if (const auto *list = value.as<ValueList>())
        return list->depth();
    if (const auto *record = value.as<ValueRecord>())
        return record->values.depth();
    return 0;
}

qint64 weight(const Value &value)
{
    if (const auto *list = value.as<ValueList>())
        return 1 + list->weight();
    if (const auto *record = value.as<ValueRecord>())
        return 1 + record->values.weight();
    return 1;
}

} // namespace Orbita
