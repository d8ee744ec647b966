#include "JackFunctions.h"

#include "SharedLibrary.h"

namespace varno {

JackFunctions loadJack() {
    const SharedLibrary library("libjack.so.0");
    JackFunctions jack{};
    library.find("jack_set_error_function", jack.set_error_function);
    library.find("jack_set_info_function", jack.set_info_function);
    library.find("jack_client_open", jack.client_open);
    library.find("jack_client_close", jack.client_close);
    library.find("jack_get_client_name", jack.get_client_name);
    library.find("jack_get_sample_rate", jack.get_sample_rate);
    library.find("jack_get_buffer_size", jack.get_buffer_size);
    library.find("jack_set_process_callback", jack.set_process_callback);
    library.find("jack_set_xrun_callback", jack.set_xrun_callback);
    library.find("jack_set_buffer_size_callback", jack.set_buffer_size_callback);
    library.find("jack_set_sample_rate_callback", jack.set_sample_rate_callback);
    library.find("jack_set_latency_callback", jack.set_latency_callback);
    library.find("jack_on_info_shutdown", jack.on_info_shutdown);
    library.find("jack_port_register", jack.port_register);
    library.find("jack_port_get_buffer", jack.port_get_buffer);
    library.find("jack_port_name", jack.port_name);
    library.find("jack_port_get_latency_range", jack.port_get_latency_range);
    library.find("jack_port_set_latency_range", jack.port_set_latency_range);
    library.find("jack_activate", jack.activate);
    library.find("jack_get_ports", jack.get_ports);
    library.find("jack_connect", jack.connect);
    library.find("jack_free", jack.free);
    return jack;
}

} // namespace varno
