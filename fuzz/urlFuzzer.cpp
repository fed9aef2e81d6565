// Addresses that the desktop hands to the program.

#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlHandler.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <cstdlib>

using namespace Orbita;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    MemoryUrlHandler urls;
    MemoryScheduler scheduler;
    VXSchemeCommunicationCenter center(urls, scheduler);
    center.setUrlSchemeForReceiving(QStringLiteral("orbita-com"));
    center.addObserver(
        &center, [](const VXRemoteAction &action) { return std::optional(action); }, QStringLiteral("version"));
    center.sendAction(VXRemoteAction(QStringLiteral("version")), [](const VXRemoteAction *) {});
    center.handleUrlString(text);
    // Behind the scheme, the fuzzer gets further; escaped, every text comes back.
    center.handleUrlString(QStringLiteral("orbita-com:") + text);
    center.handleUrlString(QStringLiteral("orbita-com:") + stringByAddingEscapeCharacters(text));
    const auto back = stringByRemovingEscapeCharacters(stringByAddingEscapeCharacters(text));
    if (!back || *back != text)
        std::abort();
    return 0;
}
