#ifndef VARNO_APPS_VARNO_LIVE_JACKFUNCTIONS_H
#define VARNO_APPS_VARNO_LIVE_JACKFUNCTIONS_H

#include <jack/jack.h>

namespace varno {

/// The functions of the JACK library that this program calls, by their names there without "jack_".
struct JackFunctions {
    decltype(&::jack_set_error_function) set_error_function;
    decltype(&::jack_set_info_function) set_info_function;
    decltype(&::jack_client_open) client_open;
    decltype(&::jack_client_close) client_close;
    decltype(&::jack_get_client_name) get_client_name;
    decltype(&::jack_get_sample_rate) get_sample_rate;
    decltype(&::jack_get_buffer_size) get_buffer_size;
    decltype(&::jack_set_process_callback) set_process_callback;
    decltype(&::jack_set_xrun_callback) set_xrun_callback;
    decltype(&::jack_set_buffer_size_callback) set_buffer_size_callback;
    decltype(&::jack_set_sample_rate_callback) set_sample_rate_callback;
    decltype(&::jack_set_latency_callback) set_latency_callback;
    decltype(&::jack_on_info_shutdown) on_info_shutdown;
    decltype(&::jack_port_register) port_register;
    decltype(&::jack_port_get_buffer) port_get_buffer;
    decltype(&::jack_port_name) port_name;
    decltype(&::jack_port_get_latency_range) port_get_latency_range;
    decltype(&::jack_port_set_latency_range) port_set_latency_range;
    decltype(&::jack_activate) activate;
    decltype(&::jack_get_ports) get_ports;
    decltype(&::jack_connect) connect;
    decltype(&::jack_free) free;
};

/// Loads the library: that of a JACK server or of PipeWire. @throws SoundUnavailable where there is none
JackFunctions loadJack();

} // namespace varno

#endif
