#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <optional>

class QTemporaryFile;

namespace Orbita {

/// Where scripts lie while they run, readable by nobody else: "orbita-toolkit" in $XDG_RUNTIME_DIR, or a temporary
/// folder where there is no such place.
class ScriptFolder {
public:
    /// Removes what a crash has left behind, so at most one companion may use the folder.
    ScriptFolder();

    /// A file that holds \a script and is removed with the object. Null when it could not be written.
    [[nodiscard]] std::unique_ptr<QTemporaryFile> write(const QString &script) const;

private:
    QString m_path;
    std::optional<QTemporaryDir> m_temporary;
};

} // namespace Orbita
