// Scripts: read, and run for a moment by a host that does nothing.

#include "companion/script/RecordingHost.h"
#include "companion/script/ScriptInterpreter.h"

#include <condition_variable>
#include <mutex>
#include <thread>

using namespace Orbita;

namespace {

constexpr std::chrono::milliseconds moment{50};

/// Ends a script that runs longer than a moment, as loops do.
class Stopper {
public:
    explicit Stopper(ScriptInterpreter &interpreter)
        : m_thread([this, &interpreter] {
              std::unique_lock lock(m_mutex);
              if (!m_done.wait_for(lock, moment, [this] { return m_isDone; }))
                  interpreter.stop();
          })
    {
    }
    ~Stopper()
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_isDone = true;
        }
        m_done.notify_one();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_isDone = false;
    std::thread m_thread;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto script = readScript(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!script)
        return 0;
    RecordingHost host;
    ScriptInterpreter interpreter(host);
    const Stopper stopper(interpreter);
    static_cast<void>(interpreter.run(*script));
    return 0;
}
