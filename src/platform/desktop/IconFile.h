#pragma once

#include <QString>

#include <vector>

namespace Orbita {

/// One picture file of an icon, with what the theme's index says of its folder. Sizes are in pixels at scale 1.
struct IconFile {
    enum class Type { Fixed, Scalable, Threshold };

    QString path;
    Type type = Type::Threshold;
    int size = 0;
    int minSize = 0;
    int maxSize = 0;
    int threshold = 2;
    int scale = 1;
};

/// How far \a file is from a picture of \a devicePixels a side: 0 when it is meant for that size.
/// The rule (DirectorySizeDistance) is that of the freedesktop icon theme specification.
[[nodiscard]] int sizeDistance(const IconFile &file, int devicePixels);

/// \a files with the best for \a devicePixels a side first. Of two that are equally far the larger comes first.
[[nodiscard]] std::vector<IconFile> nearestFirst(std::vector<IconFile> files, int devicePixels);

} // namespace Orbita
