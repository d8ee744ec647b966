/// Exceptions of the library layer, and results that turn into them. None of them crosses into the host:
/// every entry point that the host calls catches them and returns a code.
#ifndef VARNO_INTERFACES_AAX_EXCEPTION_H
#define VARNO_INTERFACES_AAX_EXCEPTION_H

#include "AAX_Errors.h"

#include <set>
#include <string>

namespace AAX::Exception {

/// Base of the family. It is no std::exception, so an entry point catches it by a clause of its own.
class Any {
public:
    /// `function` and `line` say where it was thrown and may be empty.
    explicit Any(std::string description, std::string function = {}, std::string line = {});
    virtual ~Any() = default;

    const std::string& Description() const { return mDescription; }
    const std::string& Function() const { return mFunction; }
    const std::string& Line() const { return mLine; }
    /// The whole message; borrowed, valid for the exception's life. [any]
    const char* What() const { return mWhat.c_str(); }

    /// The message made of the three: "<description> func:<function> line:<line>", without the parts whose
    /// text is empty. [any]
    static std::string CreateWhat(const std::string& description, const std::string& function,
                                  const std::string& line);

private:
    std::string mDescription;
    std::string mFunction;
    std::string mLine;
    std::string mWhat;
};

/// A result code that was not accepted.
class ResultError : public Any {
public:
    explicit ResultError(AAX_Result result);

    /// The code that was not accepted. [any]
    AAX_Result Result() const { return mResult; }

    /// A code's name and number, as in "AAX_ERROR_NULL_OBJECT (-20004)". [any]
    static std::string FormatResult(AAX_Result result);

private:
    AAX_Result mResult;
};

} // namespace AAX::Exception

/// A result that throws AAX::Exception::ResultError as soon as it takes a value that is not accepted. Only
/// AAX_SUCCESS is. Lives on the stack of one function; not synchronised.
class AAX_CheckedResult {
public:
    /// Takes and checks a first value.
    explicit AAX_CheckedResult(AAX_Result result);
    /// Takes and checks another value.
    AAX_CheckedResult& operator=(AAX_Result result);

    /// Throws AAX::Exception::ResultError, after one trace line, when the current result is not accepted. The
    /// object is reusable then: the code has become the last error and the current result AAX_SUCCESS.
    void Check();
    /// Accepts AAX_SUCCESS and nothing else.
    void ResetAcceptedResults();

    /// The value taken last, AAX_SUCCESS after a throw.
    AAX_Result CurrentResult() const { return mCurrentResult; }
    /// The code thrown last, AAX_SUCCESS until then.
    AAX_Result LastError() const { return mLastError; }

private:
    AAX_Result mCurrentResult;
    AAX_Result mLastError = AAX_SUCCESS;
    std::set<AAX_Result> mAcceptedResults;
};

#endif
