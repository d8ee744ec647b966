#include "AAX_Exception.h"

#include "AAX_StringUtilities.h"

#include <utility>

namespace AAX::Exception {

Any::Any(std::string description, std::string function, std::string line)
    : mDescription(std::move(description)),
      mFunction(std::move(function)),
      mLine(std::move(line)),
      mWhat(CreateWhat(mDescription, mFunction, mLine)) {
}

std::string Any::CreateWhat(const std::string& description, const std::string& function,
                            const std::string& line) {
    std::string what = description;
    if (!function.empty()) {
        what += " func:" + function;
    }
    if (!line.empty()) {
        what += " line:" + line;
    }
    return what;
}

ResultError::ResultError(AAX_Result result)
    : Any(FormatResult(result)),
      mResult(result) {
}

std::string ResultError::FormatResult(AAX_Result result) {
    return AsStringResult(result) + " (" + std::to_string(result) + ")";
}

} // namespace AAX::Exception
