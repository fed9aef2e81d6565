#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace Orbita {

/// A message between this program and its companion: a named action with string parameters.
class VXRemoteAction {
public:
    using Parameters = QHash<QString, QString>;

    explicit VXRemoteAction(QString name) : m_name(std::move(name)) {}
    /// Reads the form that jsonRepresentation() gives. Nothing for a text that is no JSON object, for one without a
    /// "_RemoteActionName", and for names and parameters that are no strings. "_RemoteActionParams" may be missing.
    [[nodiscard]] static std::optional<VXRemoteAction> fromJson(const QString &json);

    /// The action as one line of JSON: an object with the members "_RemoteActionName" and "_RemoteActionParams".
    [[nodiscard]] QString jsonRepresentation() const;

    [[nodiscard]] const QString &name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    [[nodiscard]] const Parameters &params() const { return m_params; }
    void setParams(const Parameters &params) { m_params = params; }

    void setValueForParameter(const QString &value, const QString &key) { m_params.insert(key, value); }
    /// The value of the parameter \a key; nothing when there is none.
    [[nodiscard]] std::optional<QString> valueForParameter(const QString &key) const;

    friend bool operator==(const VXRemoteAction &, const VXRemoteAction &) = default;

private:
    QString m_name;
    Parameters m_params;
};

} // namespace Orbita
