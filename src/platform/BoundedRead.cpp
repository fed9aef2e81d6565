#include "platform/BoundedRead.h"

#include <algorithm>
#include <array>

namespace Orbita {

QByteArray readAtMost(QIODevice &device, qint64 limit)
{
    QByteArray content;
    content.reserve(std::min(device.size(), limit)); // what says it is empty, as below /proc, may still hold something
    std::array<char, 16 * 1024> piece;
    while (content.size() < limit) {
        const qint64 wanted = std::min<qint64>(piece.size(), limit - content.size());
        const qint64 count = device.read(piece.data(), wanted);
        if (count <= 0)
            break;
        content.append(piece.data(), count);
    }
    return content;
}

} // namespace Orbita
