#pragma once

#include <QObject>
#include <QStringList>
#include <QVariant>

namespace Orbita {

/// The program's stored preferences: a dictionary of property-list values.
///
/// Every read sees what is stored now, every write is stored at once.
class UserDefaults : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The value under \a key; an invalid QVariant when absent. Types are those of PropertyList.
    [[nodiscard]] virtual QVariant value(const QString &key) const = 0;
    /// Stores \a value, which reads back as PropertyList::normalized() has it; an invalid one removes the key. A value
    /// that no property list can hold is ignored.
    virtual void setValue(const QString &key, const QVariant &value) = 0;
    /// Makes sure that everything set so far has reached the disk. False when it could not be written.
    virtual bool synchronize() = 0;

    /// The number under \a key where an integer, a whole or broken real (truncated), a boolean or a numeric string
    /// is stored; 0 otherwise.
    [[nodiscard]] qint64 integer(const QString &key) const;
    /// True for true, for a number other than 0 and for the strings "YES", "true" and "1"; false otherwise.
    [[nodiscard]] bool boolean(const QString &key) const;
    [[nodiscard]] bool contains(const QString &key) const { return value(key).isValid(); }

Q_SIGNALS:
    /// \a key was set, whether or not to another value, or another program changed it.
    void changed(const QString &key);
    /// Another program changed the values of \a keys. Not emitted for our own writes.
    void changedExternally(const QStringList &keys);

protected:
    /// Emits what there is to emit when another program changed the values of \a keys.
    void announceExternalChange(const QStringList &keys);
};

} // namespace Orbita
