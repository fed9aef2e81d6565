#include "platform/desktop/IconFile.h"

#include <algorithm>
#include <cstdlib>

namespace Orbita {

namespace {

/// The distance from a range of sizes within which a folder's pictures count as fit. Too small or too large a picture
/// is compared with the smallest and largest size that the folder is for.
int rangeDistance(int wanted, int fitFrom, int fitTo, int smallest, int largest)
{
    if (wanted < fitFrom)
        return std::abs(smallest - wanted);
    if (wanted > fitTo)
        return std::abs(wanted - largest);
    return 0;
}

} // namespace

int sizeDistance(const IconFile &file, int devicePixels)
{
    const int scale = file.scale;
    switch (file.type) {
    case IconFile::Type::Fixed:
        return std::abs(file.size * scale - devicePixels);
    case IconFile::Type::Scalable:
        return rangeDistance(devicePixels, file.minSize * scale, file.maxSize * scale, file.minSize * scale,
                             file.maxSize * scale);
    case IconFile::Type::Threshold:
        return rangeDistance(devicePixels, (file.size - file.threshold) * scale, (file.size + file.threshold) * scale,
                             file.minSize * scale, file.maxSize * scale);
    }
    Q_UNREACHABLE();
}

std::vector<IconFile> nearestFirst(std::vector<IconFile> files, int devicePixels)
{
    std::stable_sort(files.begin(), files.end(), [devicePixels](const IconFile &a, const IconFile &b) {
        const int distanceA = sizeDistance(a, devicePixels);
        const int distanceB = sizeDistance(b, devicePixels);
        return distanceA != distanceB ? distanceA < distanceB : a.size * a.scale > b.size * b.scale;
    });
    return files;
}

} // namespace Orbita
