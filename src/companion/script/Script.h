#pragma once

#include "base/Result.h"
#include "companion/script/ScriptProblem.h"

#include <QStringView>

#include <memory>

namespace Orbita {

struct ScriptTree;

/// A script that was read and can be run, any number of times. Copies share the tree.
class Script {
public:
    explicit Script(std::shared_ptr<const ScriptTree> tree) : m_tree(std::move(tree)) {}
    [[nodiscard]] const ScriptTree &tree() const { return *m_tree; }

private:
    std::shared_ptr<const ScriptTree> m_tree;
};

/// The longest source that is read, in UTF-16 units: 4 MiB of ASCII.
inline constexpr qsizetype longestScript = 4 * 1024 * 1024;

/// Reads the subset of AppleScript that runs here. Any text may be handed in; \a source need not outlive the call.
///
/// The first thing that is not understood is the problem: its number is ScriptProblem::syntax. Expressions and blocks
/// may be nested 200 levels deep.
[[nodiscard]] Result<Script, ScriptProblem> readScript(QStringView source);

} // namespace Orbita
