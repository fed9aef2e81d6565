// Property lists, XML and binary: the item file, the settings, and archives within them.

#include "platform/ColorArchive.h"
#include "platform/KeyedArchive.h"
#include "platform/PropertyList.h"

#include <cstdlib>

using namespace Orbita;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    static_cast<void>(KeyedArchive::decode(bytes));
    static_cast<void>(ColorArchive::decode(bytes));
    const auto root = PropertyList::decode(bytes);
    if (!root)
        return 0;
    // What was read can be written so that it is read again, if it can be written at all: XML knows fewer characters.
    for (const auto format : {PropertyList::Format::Binary, PropertyList::Format::Xml}) {
        const auto encoded = PropertyList::encode(*root, format);
        if (encoded ? !PropertyList::decode(*encoded) : format == PropertyList::Format::Binary)
            std::abort();
    }
    return 0;
}
