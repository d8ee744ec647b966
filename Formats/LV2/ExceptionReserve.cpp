// The C++ library, which the binary brings with it, sets memory aside when it is loaded, so that exceptions
// can be thrown when there is no other. It keeps that memory when the binary is unloaded, so that a host
// which opens and closes it again and again would lose 72 KB each time.

namespace __gnu_cxx {
// Gives back what the library keeps; no header of its declares it.
void __freeres();
} // namespace __gnu_cxx

namespace varno {
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
} // namespace varno
