#pragma once

#include <QHash>
#include <QString>

namespace Orbita {

/// A message between this program and its companion: a named action with string parameters.
class VXRemoteAction {
public:
    explicit VXRemoteAction(QString name) : m_name(std::move(name)) {}

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] const QHash<QString, QString> &params() const { return m_params; }

    void setValueForParameter(const QString &value, const QString &key) { m_params.insert(key, value); }
    /// The value of the parameter \a key; a null string when there is none.
    [[nodiscard]] QString valueForParameter(const QString &key) const { return m_params.value(key); }

private:
    QString m_name;
    QHash<QString, QString> m_params;
};

} // namespace Orbita
