#include "platform/x11/X11Property.h"

#include <QList>

namespace Orbita {

namespace {

constexpr quint32 MaxIconSide = 512;

QByteArrayView bytes(const xcb_get_property_reply_t *reply)
{
    if (reply == nullptr || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply)), xcb_get_property_value_length(reply)};
}

} // namespace

xcb_get_property_cookie_t requestProperty(X11Connection &connection, xcb_window_t window, xcb_atom_t property,
                                          quint32 maxBytes)
{
    return xcb_get_property(connection.xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maxBytes / 4);
}

PropertyReply propertyReply(X11Connection &connection, xcb_get_property_cookie_t cookie)
{
    return connection.reply(xcb_get_property_reply, cookie);
}

std::span<const quint32> cardinals(const xcb_get_property_reply_t *reply)
{
    if (reply == nullptr || reply->format != 32)
        return {};
    return {static_cast<const quint32 *>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply)) / sizeof(quint32)};
}

quint32 cardinal(const xcb_get_property_reply_t *reply, quint32 fallback)
{
    const auto items = cardinals(reply);
    return items.empty() ? fallback : items.front();
}

QString text(const xcb_get_property_reply_t *reply, xcb_atom_t utf8String)
{
    QByteArrayView data = bytes(reply);
    if (const auto end = data.indexOf('\0'); end >= 0)
        data = data.first(end);
    const bool isUtf8 = reply != nullptr && reply->type == utf8String;
    return (isUtf8 ? QString::fromUtf8(data) : QString::fromLatin1(data)).simplified();
}

std::pair<QString, QString> instanceAndClass(const xcb_get_property_reply_t *reply)
{
    const QList<QByteArray> parts = bytes(reply).toByteArray().split('\0');
    return {QString::fromUtf8(parts.value(0)), QString::fromUtf8(parts.value(1))};
}

QImage iconFromCardinals(std::span<const quint32> data)
{
    std::span<const quint32> best;
    quint32 bestWidth = 0;
    while (data.size() > 2) {
        const quint32 width = data[0];
        const quint64 count = quint64(width) * data[1];
        data = data.subspan(2);
        if (count > data.size())
            break;
        const bool fits = count > 0 && width <= MaxIconSide && count / width <= MaxIconSide;
        if (fits && count > best.size()) {
            best = data.first(count);
            bestWidth = width;
        }
        data = data.subspan(count);
    }
    if (best.empty())
        return {};
    const QImage view(reinterpret_cast<const uchar *>(best.data()), int(bestWidth), int(best.size() / bestWidth),
                      QImage::Format_ARGB32);
    return view.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace Orbita
