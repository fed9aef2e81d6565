#pragma once

#include "platform/Dialogs.h"

#include <functional>
#include <vector>

namespace Orbita {

/// Gives planted answers and writes down what was asked.
class MemoryDialogs final : public Dialogs {
public:
    [[nodiscard]] int runAlert(const Alert &alert) override
    {
        alerts.push_back(alert);
        whileOpen();
        return answer;
    }
    [[nodiscard]] std::optional<QString> chooseFile(const FileRequest &request) override
    {
        fileRequests.push_back(request);
        whileOpen();
        return file;
    }

    int answer = 0;
    std::optional<QString> file;
    std::function<void()> whileOpen = [] {}; ///< what happens before the user answers
    std::vector<Alert> alerts;
    std::vector<FileRequest> fileRequests;
};

} // namespace Orbita
