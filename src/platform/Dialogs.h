#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Orbita {

/// Questions to the user that must be answered before the program goes on. Each runs an event loop of its own.
class Dialogs {
public:
    /// A message with buttons.
    struct Alert {
        QString message;
        QString informativeText;
        QStringList buttons; ///< the first has the Return key, the last Escape
    };
    /// What a chosen file is for.
    struct FileRequest {
        QString title;
        QString filterName;       ///< what the user calls the files, "Pictures" for instance
        QStringList namePatterns; ///< "*.png", ...
    };

    virtual ~Dialogs() = default;

    /// The index of the pressed button.
    [[nodiscard]] virtual int runAlert(const Alert &alert) = 0;
    /// The path of the chosen file; nothing when the user cancelled.
    [[nodiscard]] virtual std::optional<QString> chooseFile(const FileRequest &request) = 0;
};

} // namespace Orbita
