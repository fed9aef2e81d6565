#pragma once

#include "platform/PropertyList.h"
#include "platform/UserDefaults.h"

#include <QVariantMap>

namespace Orbita {

/// Keeps preferences in memory.
class MemoryUserDefaults final : public UserDefaults {
    Q_OBJECT
public:
    using UserDefaults::UserDefaults;

    [[nodiscard]] QVariant value(const QString &key) const override { return m_values.value(key); }
    void setValue(const QString &key, const QVariant &value) override
    {
        if (store(key, value))
            Q_EMIT changed(key);
    }
    bool synchronize() override { return synchronizes; }

    /// As if another program had written \a value under \a key.
    void changeExternally(const QString &key, const QVariant &value)
    {
        if (store(key, value))
            announceExternalChange({key});
    }

    bool synchronizes = true; ///< what synchronize() answers

private:
    bool store(const QString &key, const QVariant &value)
    {
        const auto stored = PropertyList::normalized(value.isValid() ? QVariantMap{{key, value}} : QVariantMap());
        if (!stored)
            return false; // not representable
        m_values.remove(key);
        m_values.insert(stored->toMap());
        return true;
    }

    QVariantMap m_values;
};

} // namespace Orbita
