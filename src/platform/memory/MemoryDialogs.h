#pragma once

#include "platform/Dialogs.h"

#include <vector>

namespace Orbita {

/// Gives planted answers and writes down what was asked.
class MemoryDialogs final : public Dialogs {
public:
    [[nodiscard]] int runAlert(const Alert &alert) override
    {
        alerts.push_back(alert);
        return answer;
    }
    [[nodiscard]] std::optional<QString> chooseFile(const FileRequest &request) override
    {
        fileRequests.push_back(request);
        return file;
    }

    int answer = 0;
    std::optional<QString> file;
    std::vector<Alert> alerts;
    std::vector<FileRequest> fileRequests;
};

} // namespace Orbita
