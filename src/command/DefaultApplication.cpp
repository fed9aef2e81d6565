#include "command/DefaultApplication.h"

#include <algorithm>
#include <vector>

namespace Orbita {

namespace {

constexpr std::string_view group = "[Default Applications]";
constexpr std::string_view blanks = " \t\r";

using Lines = std::vector<std::string>;

Lines split(std::string_view text, char separator)
{
    Lines parts;
    while (!text.empty()) {
        const auto end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

std::string joined(const Lines &parts, char terminator)
{
    std::string text;
    for (const std::string &part : parts)
        (text += part) += terminator;
    return text;
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The lines behind the group's first, up to the next group. Where the list has no such group, both are the end.
struct Section {
    Lines::iterator begin, end;
};

Section defaultsOf(Lines &lines)
{
    const auto header = std::ranges::find(lines, group, trimmed);
    const auto begin = header == lines.end() ? header : header + 1;
    return {begin, std::find_if(begin, lines.end(), [](const auto &line) { return trimmed(line).starts_with('['); })};
}

Lines::iterator lineOf(const Section &section, std::string_view type)
{
    return std::find_if(section.begin, section.end, [type](std::string_view line) {
        return line.find('=') != std::string_view::npos && trimmed(line.substr(0, line.find('='))) == type;
    });
}

/// The applications that \a line names, but for \a desktopId.
Lines others(std::string_view line, std::string_view desktopId)
{
    Lines ids = split(trimmed(line.substr(line.find('=') + 1)), ';');
    std::erase_if(ids, [desktopId](std::string_view id) { return trimmed(id).empty() || trimmed(id) == desktopId; });
    return ids;
}

/// Removes \a line, and the group with its only line.
void removeLine(Lines &lines, Lines::iterator line)
{
    lines.erase(line);
    if (const Section section = defaultsOf(lines); section.begin == section.end)
        lines.erase(section.begin - 1);
}

std::string lineFor(std::string_view type, const Lines &ids)
{
    return std::string(type) + '=' + joined(ids, ';');
}

} // namespace

std::string withDefault(std::string_view list, std::string_view type, std::string_view desktopId)
{
    Lines lines = split(list, '\n');
    if (std::ranges::find(lines, group, trimmed) == lines.end())
        lines.emplace_back(group);
    const Section section = defaultsOf(lines);
    const auto line = lineOf(section, type);
    Lines ids{std::string(desktopId)};
    if (line == section.end) {
        lines.insert(section.begin, lineFor(type, ids));
    } else {
        std::ranges::move(others(*line, desktopId), std::back_inserter(ids));
        *line = lineFor(type, ids);
    }
    return joined(lines, '\n');
}

std::string withoutDefault(std::string_view list, std::string_view type, std::string_view desktopId)
{
    Lines lines = split(list, '\n');
    const Section section = defaultsOf(lines);
    const auto line = lineOf(section, type);
    if (line == section.end || line->find(desktopId) == std::string::npos)
        return std::string(list);
    if (const Lines ids = others(*line, desktopId); ids.empty())
        removeLine(lines, line);
    else
        *line = lineFor(type, ids);
    return joined(lines, '\n');
}

} // namespace Orbita
