#include "command/Instance.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include <systemd/sd-bus.h>

namespace Orbita {

namespace {

struct Closer {
    void operator()(sd_bus *bus) const { sd_bus_flush_close_unref(bus); }
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};

constexpr const char *instanceName = "org.orbita.Orbita";
constexpr uint64_t answerTimeout = 10'000'000; // microseconds; the program may be busy starting

using BusPointer = std::unique_ptr<sd_bus, Closer>;
using MessagePointer = std::unique_ptr<sd_bus_message, Closer>;

BusPointer openSessionBus()
{
    sd_bus *bus = nullptr;
    return sd_bus_open_user(&bus) < 0 ? nullptr : BusPointer(bus);
}

/// A call of the instance; null when there is no memory for it.
MessagePointer newCall(sd_bus *bus, const char *interface, const char *method)
{
    sd_bus_message *created = nullptr;
    if (sd_bus_message_new_method_call(bus, &created, instanceName, "/org/orbita/Orbita", interface, method) < 0)
        return nullptr;
    // We start the program ourselves where it does not run, to pass on the command and to see it fail.
    sd_bus_message_set_auto_start(created, 0);
    return MessagePointer(created);
}

/// What a program of the session says, made fit for a terminal.
std::string singleLine(std::string_view text)
{
    constexpr std::size_t longest = 300;
    std::string line(text.substr(0, longest));
    const auto isControl = [](unsigned char byte) { return byte < ' ' || byte == 0x7f; };
    std::ranges::replace_if(line, isControl, ' ');
    return line;
}

CallAnswer answerTo(const sd_bus_error &error)
{
    if (sd_bus_error_has_name(&error, SD_BUS_ERROR_SERVICE_UNKNOWN)
        || sd_bus_error_has_name(&error, SD_BUS_ERROR_NAME_HAS_NO_OWNER))
        return {CallResult::NotRunning};
    if (sd_bus_error_has_name(&error, "org.orbita.Orbita.Refused") && error.message)
        return {CallResult::Refused, singleLine(error.message)};
    return {CallResult::Failed};
}

CallAnswer send(sd_bus *bus, sd_bus_message *call)
{
    sd_bus_error error = SD_BUS_ERROR_NULL;
    const int result = sd_bus_call(bus, call, answerTimeout, &error, nullptr);
    CallAnswer answer = result >= 0 ? CallAnswer{CallResult::Done} : answerTo(error);
    sd_bus_error_free(&error);
    return answer;
}

bool appendUrls(sd_bus_message *call, const std::vector<std::string> &urls)
{
    bool isAppended = sd_bus_message_open_container(call, 'a', "s") >= 0;
    for (const std::string &url : urls)
        isAppended = isAppended && url.find('\0') == std::string::npos
            && sd_bus_message_append_basic(call, 's', url.c_str()) >= 0;
    return isAppended && sd_bus_message_close_container(call) >= 0 && sd_bus_message_append(call, "a{sv}", 0) >= 0;
}

} // namespace

CallAnswer callInstance(const char *method)
{
    const BusPointer bus = openSessionBus();
    const MessagePointer call = bus ? newCall(bus.get(), instanceName, method) : nullptr;
    return call ? send(bus.get(), call.get()) : CallAnswer{CallResult::NoBus};
}

CallAnswer openUrls(const std::vector<std::string> &urls)
{
    const BusPointer bus = openSessionBus();
    const MessagePointer call = bus ? newCall(bus.get(), "org.freedesktop.Application", "Open") : nullptr;
    if (!call)
        return {CallResult::NoBus};
    return appendUrls(call.get(), urls) ? send(bus.get(), call.get()) : CallAnswer{CallResult::Unsendable};
}

void reloadBusConfiguration()
{
    if (const BusPointer bus = openSessionBus()) {
        sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "ReloadConfig", nullptr, nullptr, nullptr);
    }
}

bool isInstanceRunning()
{
    const BusPointer bus = openSessionBus();
    return bus && sd_bus_get_name_creds(bus.get(), instanceName, 0, nullptr) >= 0;
}

} // namespace Orbita
