#include "toolkit/VXRemoteAction.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Orbita {

namespace {

const QString nameMember = QStringLiteral("_RemoteActionName");
const QString paramsMember = QStringLiteral("_RemoteActionParams");

} // namespace

std::optional<VXRemoteAction> VXRemoteAction::fromJson(const QString &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json.toUtf8()).object();
    const QJsonValue name = object.value(nameMember);
    const QJsonValue params = object.value(paramsMember);
    if (!name.isString() || !(params.isObject() || params.isUndefined()))
        return std::nullopt;
    VXRemoteAction action(name.toString());
    const QJsonObject members = params.toObject();
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (!member.value().isString())
            return std::nullopt;
        action.setValueForParameter(member.value().toString(), member.key());
    }
    return action;
}

QString VXRemoteAction::jsonRepresentation() const
{
    QJsonObject params;
    for (auto param = m_params.begin(); param != m_params.end(); ++param)
        params.insert(param.key(), param.value());
    const QJsonObject object{{nameMember, m_name}, {paramsMember, params}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)).remove(u'\n');
}

std::optional<QString> VXRemoteAction::valueForParameter(const QString &key) const
{
    const auto found = m_params.find(key);
    return found != m_params.end() ? std::optional(*found) : std::nullopt;
}

} // namespace Orbita
