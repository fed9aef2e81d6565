#include "toolkit/Digest.h"

#include <QCryptographicHash>

namespace Orbita {

QString md5(const QString &string)
{
    return md5WithSalt(string, {});
}

QString md5WithSalt(const QString &string, const QString &salt)
{
    const QString text = salt + string;
    const QByteArray bytes = text.toUtf8().left(text.size());
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
}

QString scriptQuestion(const QString &script)
{
    return md5WithSalt(script, QStringLiteral("qe8TkLpvwmwRR913kzoaHBxn\u00C4\u00C9_ufpo"));
}

QString scriptAnswer(const QString &script)
{
    return md5WithSalt(script, QStringLiteral("Kr7TnPq2Wv51mbcx48gtz:;(/&hLQ"));
}

} // namespace Orbita
