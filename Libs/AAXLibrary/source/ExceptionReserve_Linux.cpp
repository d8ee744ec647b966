// The C++ library, which each binary for hosts contains, allocates a reserve when it is loaded, so that
// exceptions can be thrown when there is no other memory. It does not free the reserve when the binary is
// unloaded, so that a host which opens and closes it again and again would lose 72 KB each time.

namespace __gnu_cxx {
// Frees what the library keeps; no header of the library declares it.
void __freeres();
} // namespace __gnu_cxx

namespace {

// Lives as long as the binary is loaded.
class ExceptionReserve {
public:
    ExceptionReserve() = default;
    ExceptionReserve(const ExceptionReserve&) = delete;
    ExceptionReserve& operator=(const ExceptionReserve&) = delete;
    ~ExceptionReserve() { __gnu_cxx::__freeres(); }
};

[[maybe_unused]] const ExceptionReserve kReserve;

} // namespace
