#include "platform/desktop/shortcuts/KdeShortcuts.h"

namespace Orbita {

namespace {

/// \a value without the escapes of the file's format. Those of lists, like "\,", are left alone.
QByteArray unescaped(const QByteArray &value)
{
    QByteArray plain;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            plain += value[i];
            continue;
        }
        const char escaped = value[++i];
        if (escaped == 't')
            plain += '\t';
        else if (escaped == 's')
            plain += ' ';
        else if (escaped == '\\')
            plain += '\\';
        else
            (plain += '\\') += escaped;
    }
    return plain;
}

/// The first item of a list whose items are parted by commas; a comma in an item has a backslash before it.
QByteArray firstItem(const QByteArray &list)
{
    QByteArray item;
    for (qsizetype i = 0; i < list.size() && list[i] != ','; ++i) {
        if (list[i] == '\\' && i + 1 < list.size())
            ++i;
        item += list[i];
    }
    return item;
}

} // namespace

QList<Accelerator> kdeShortcuts(const QByteArray &content)
{
    QList<Accelerator> accelerators;
    for (const QByteArray &line : content.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        // Entries are "action=current,default,friendly name"; those that begin with "_k_" describe the group.
        if (equals <= 0 || line.startsWith('#') || line.startsWith('[') || line.startsWith("_k_"))
            continue;
        const QByteArray current = firstItem(unescaped(line.mid(equals + 1).trimmed()));
        for (const QByteArray &name : current.split('\t')) {
            if (const auto accelerator = acceleratorFromQt(QString::fromUtf8(name)))
                accelerators.append(*accelerator);
        }
    }
    return accelerators;
}

} // namespace Orbita
