#include "AAX_Guarded.h"

#include "AAX_CHostServices.h"
#include "AAX_Exception.h"

#include <exception>

namespace {

void TraceCaught(const AAX_EntryPoint& entry, const char* message) noexcept {
    const bool isOfClass = entry.mClass != nullptr;
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%s%s%s exception caught: %s",
                             isOfClass ? entry.mClass : "", isOfClass ? "::" : "", entry.mName, message);
}

} // namespace

AAX_Result AAX_ResultOfCurrentException(const AAX_EntryPoint& entry) noexcept {
    try {
        throw;
    } catch (const AAX::Exception::ResultError& error) {
        TraceCaught(entry, error.What());
        return error.Result();
    } catch (const AAX::Exception::Any& error) {
        TraceCaught(entry, error.What());
    } catch (const std::exception& error) {
        TraceCaught(entry, error.what());
    } catch (...) {
        TraceCaught(entry, "unknown");
    }
    return AAX_ERROR_UNKNOWN_EXCEPTION;
}
