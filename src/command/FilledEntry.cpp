#include "command/Entries.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr std::string_view firstLine = "# Written by \"orbita --register\"; \"orbita --unregister\" removes it.\n";

/// \a path between the quotation marks of an entry's command. Such texts are unescaped twice: as a value, and as an
/// argument.
std::string inQuotes(std::string_view path)
{
    std::string text;
    for (const char c : path) {
        if (c == '\\')
            text += R"(\\\\)";
        else if (c == '"' || c == '`' || c == '$')
            text.append(R"(\\)") += c;
        else
            text += c;
    }
    return text;
}

void replaceAll(std::string &text, std::string_view what, const std::string &with)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

} // namespace

std::string filledEntry(const EntryTemplate &entry, const std::filesystem::path &folder)
{
    // Programs are looked for before a doubled "%" is made a single one, so none can be written.
    const auto isUnfit = [](unsigned char c) { return c < ' ' || c == 0x7f || c == '%'; };
    if (std::ranges::any_of(folder.native(), isUnfit))
        return {};
    std::string text = std::string(firstLine).append(entry.text);
    replaceAll(text, "@ORBITA@", inQuotes((folder / "orbita").native()));
    replaceAll(text, "@ORBITA_TOOLKIT@", inQuotes((folder / "orbita-toolkit").native()));
    return text;
}

bool isFilledEntry(std::string_view text)
{
    return text.starts_with(firstLine);
}

} // namespace Orbita
