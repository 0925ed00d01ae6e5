/* The daemon's reference in C: its interface by sd-bus, one thread, empty methods and a constant. What a bus
 * service costs at least, with a library that does no more than the bus needs.
 *
 * Usage: sdbus_service BUS-NAME */
#include <stdio.h>
#include <string.h>
#include <systemd/sd-bus.h>

static int set_nothing(sd_bus_message* call, void* userdata, sd_bus_error* error)
{
    (void)userdata;
    (void)error;
    return sd_bus_reply_method_return(call, NULL);
}

static int get_width(sd_bus_message* call, void* userdata, sd_bus_error* error)
{
    (void)userdata;
    (void)error;
    return sd_bus_reply_method_return(call, "i", 688);
}

static int get_height(sd_bus_message* call, void* userdata, sd_bus_error* error)
{
    (void)userdata;
    (void)error;
    return sd_bus_reply_method_return(call, "i", 573);
}

/* Unprivileged, because sd-bus otherwise asks the bus about the caller before every call. */
#define SETTER(name, in) \
    SD_BUS_METHOD(name, in, NULL, set_nothing, SD_BUS_VTABLE_METHOD_NO_REPLY | SD_BUS_VTABLE_UNPRIVILEGED)
#define GETTER(name, function) SD_BUS_METHOD(name, NULL, "i", function, SD_BUS_VTABLE_UNPRIVILEGED)

static const sd_bus_vtable video_display[] = {
    SD_BUS_VTABLE_START(0),
    SETTER("set_video_layer_enabled", "b"),
    SETTER("set_video_size", "ii"),
    SETTER("set_video_rotation", "i"),
    SETTER("set_video_restart", "i"),
    SETTER("set_video_mode", "i"),
    SETTER("set_video_position", "ii"),
    GETTER("get_displayed_video_width", get_width),
    GETTER("get_displayed_video_height", get_height),
    SD_BUS_VTABLE_END,
};

static int serve(sd_bus* bus)
{
    for (;;) {
        int result = sd_bus_process(bus, NULL);
        if (result == 0)
            result = sd_bus_wait(bus, UINT64_MAX);
        if (result < 0)
            return result;
    }
}

int main(int argc, char** argv)
{
    if (argc != 2) {
        (void)fputs("Usage: sdbus_service BUS-NAME\n", stderr);
        return 2;
    }

    sd_bus* bus = NULL;
    int result = sd_bus_open_system(&bus);
    if (result >= 0)
        result = sd_bus_add_object_vtable(bus, NULL, "/videodisplay", "velmar.haldend.videodisplay",
                                          video_display, NULL);
    if (result >= 0)
        result = sd_bus_request_name(bus, argv[1], 0);
    if (result >= 0)
        result = serve(bus);
    (void)fprintf(stderr, "sdbus_service: %s\n", strerror(-result));
    sd_bus_unref(bus);
    return 1;
}
