#include "command/Entries.h"

#include <algorithm>

namespace Orbita {

namespace {

constexpr std::string_view firstLine = "# Written by \"orbita --register\"; \"orbita --unregister\" removes it.\n";

/// \a path between the quotation marks of an entry's command. Such texts are unescaped twice: as a value, and as an
/// argument. "%" has a meaning in the entries of applications only.
std::string quoted(std::string_view path, bool isForApplication)
{
    std::string text;
    for (const char c : path) {
        if (c == '\\')
            text += R"(\\\\)";
        else if (c == '"' || c == '`' || c == '$')
            text.append(R"(\\)") += c;
        else
            text.append(c == '%' && isForApplication ? 2 : 1, c);
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
    const auto isControl = [](unsigned char c) { return c < ' ' || c == 0x7f; };
    if (std::ranges::any_of(folder.native(), isControl))
        return {};
    const bool isForApplication = entry.path.ends_with(".desktop");
    std::string text = std::string(firstLine).append(entry.text);
    replaceAll(text, "@ORBITA@", quoted((folder / "orbita").native(), isForApplication));
    replaceAll(text, "@ORBITA_TOOLKIT@", quoted((folder / "orbita-toolkit").native(), isForApplication));
    return text;
}

bool isFilledEntry(std::string_view text)
{
    return text.starts_with(firstLine);
}

} // namespace Orbita
