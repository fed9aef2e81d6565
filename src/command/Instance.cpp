#include "command/Instance.h"

#include <memory>

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

BusPointer openSessionBus()
{
    sd_bus *bus = nullptr;
    return sd_bus_open_user(&bus) < 0 ? nullptr : BusPointer(bus);
}

} // namespace

CallResult callInstance(const char *method)
{
    const BusPointer bus = openSessionBus();
    if (!bus)
        return CallResult::NoBus;

    sd_bus_message *created = nullptr;
    if (sd_bus_message_new_method_call(bus.get(), &created, instanceName, "/org/orbita/Orbita", "org.orbita.Orbita",
                                       method)
        < 0)
        return CallResult::NoBus;
    const std::unique_ptr<sd_bus_message, Closer> call(created);
    // We start the program ourselves where it does not run, to pass on the command and to see it fail.
    sd_bus_message_set_auto_start(call.get(), 0);

    sd_bus_error error = SD_BUS_ERROR_NULL;
    const int result = sd_bus_call(bus.get(), call.get(), answerTimeout, &error, nullptr);
    const bool nobody = sd_bus_error_has_name(&error, SD_BUS_ERROR_SERVICE_UNKNOWN)
        || sd_bus_error_has_name(&error, SD_BUS_ERROR_NAME_HAS_NO_OWNER);
    sd_bus_error_free(&error);
    if (result >= 0)
        return CallResult::Done;
    return nobody ? CallResult::NotRunning : CallResult::Failed;
}

bool isInstanceRunning()
{
    const BusPointer bus = openSessionBus();
    return bus && sd_bus_get_name_creds(bus.get(), instanceName, 0, nullptr) >= 0;
}

} // namespace Orbita
