#pragma once

#include "platform/Workspace.h"

#include <QHash>
#include <QStringList>

namespace Orbita {

/// A workspace of planted applications that writes down what it is asked to do.
class MemoryWorkspace final : public Workspace {
    Q_OBJECT
public:
    using Workspace::Workspace;

    [[nodiscard]] Result<void, Error> launchApplication(const QString &path) override;
    [[nodiscard]] Result<void, Error> openUrl(const QUrl &url) override;
    [[nodiscard]] Result<void, Error> openFile(const QString &path) override;
    [[nodiscard]] Result<void, Error> openFile(const QString &path, const QString &applicationPath) override;
    [[nodiscard]] Result<void, Error> showInFileManager(const QString &path) override;
    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] Image icon(const QString &path) const override;
    [[nodiscard]] std::optional<QString> defaultApplicationForFile(const QString &path) const override;
    [[nodiscard]] QStringList applicationsForFile(const QString &path) const override;
    [[nodiscard]] std::optional<QString> defaultApplicationForScheme(const QString &scheme) const override;
    [[nodiscard]] std::optional<QString> coreApplication(const QString &name) const override;

    QHash<QString, QString> displayNames;     ///< path -> name; other paths are called by their last component
    QHash<QString, QString> coreApplications; ///< core entry -> application path
    QHash<QString, QString> schemeHandlers;   ///< scheme -> application path
    QHash<QString, QStringList> fileHandlers; ///< path -> application paths, the default one first
    QHash<QString, Image> icons;              ///< path -> icon; other paths get the bundled "Default"
    bool hasDefaultHandlers = true;           ///< whether the first one is
    std::optional<Error> nextError;           ///< what the next action answers, once

    QStringList actions;          ///< "launch PATH", "open FILE with APPLICATION", ... in order
    mutable int iconRequests = 0; ///< how often icon() was asked

private:
    Result<void, Error> perform(const QString &action);
};

} // namespace Orbita
