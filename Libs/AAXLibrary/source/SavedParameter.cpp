#include "SavedParameter.h"

#include "AAX_CChunkDataParser.h"
#include "AAX_IParameter.h"

namespace {

// Returns the result of `visit` for the parameter's value; true when the parameter has none.
template<class Visit>
bool WithValue(const AAX_IParameter& parameter, Visit&& visit) {
    if (float value = 0.0F; parameter.GetValueAsFloat(&value)) {
        return visit(value);
    }
    if (int32_t value = 0; parameter.GetValueAsInt32(&value)) {
        return visit(value);
    }
    if (bool value = false; parameter.GetValueAsBool(&value)) {
        return visit(value);
    }
    if (double value = 0.0; parameter.GetValueAsDouble(&value)) {
        return visit(value);
    }
    if (AAX_CString value; parameter.GetValueAsString(&value)) {
        return visit(value);
    }
    return true;
}

void Add(AAX_CChunkDataParser& chunk, const char* name, float value) {
    chunk.AddDouble(name, static_cast<double>(value));
}
void Add(AAX_CChunkDataParser& chunk, const char* name, int32_t value) {
    chunk.AddInt32(name, value);
}
void Add(AAX_CChunkDataParser& chunk, const char* name, bool value) {
    chunk.AddInt32(name, value ? 1 : 0);
}
void Add(AAX_CChunkDataParser& chunk, const char* name, double value) {
    chunk.AddDouble(name, value);
}
void Add(AAX_CChunkDataParser& chunk, const char* name, const AAX_CString& value) {
    chunk.AddString(name, value);
}

bool Find(AAX_CChunkDataParser& chunk, const char* name, float* outValue) {
    double value = 0.0;
    const bool isFound = chunk.FindDouble(name, &value);
    *outValue = static_cast<float>(value);
    return isFound;
}
bool Find(AAX_CChunkDataParser& chunk, const char* name, int32_t* outValue) {
    return chunk.FindInt32(name, outValue);
}
bool Find(AAX_CChunkDataParser& chunk, const char* name, bool* outValue) {
    int32_t value = 0;
    const bool isFound = chunk.FindInt32(name, &value);
    *outValue = value != 0;
    return isFound;
}
bool Find(AAX_CChunkDataParser& chunk, const char* name, double* outValue) {
    return chunk.FindDouble(name, outValue);
}
bool Find(AAX_CChunkDataParser& chunk, const char* name, AAX_CString* outValue) {
    return chunk.FindString(name, outValue);
}

void Set(AAX_IParameter& parameter, float value) {
    parameter.SetValueWithFloat(value);
}
void Set(AAX_IParameter& parameter, int32_t value) {
    parameter.SetValueWithInt32(value);
}
void Set(AAX_IParameter& parameter, bool value) {
    parameter.SetValueWithBool(value);
}
void Set(AAX_IParameter& parameter, double value) {
    parameter.SetValueWithDouble(value);
}
void Set(AAX_IParameter& parameter, const AAX_CString& value) {
    parameter.SetValueWithString(value);
}

template<class T>
bool AreSame(const T& left, const T& right) {
    return left == right;
}
bool AreSame(double left, double right) {
    return static_cast<float>(left) == static_cast<float>(right);
}

} // namespace

void SaveParameter(const AAX_IParameter& parameter, AAX_CChunkDataParser& chunk) {
    WithValue(parameter, [&](const auto& value) {
        Add(chunk, parameter.Identifier(), value);
        return true;
    });
}

void RestoreParameter(AAX_IParameter& parameter, AAX_CChunkDataParser& chunk) {
    WithValue(parameter, [&]<class T>(const T& /*current*/) {
        T saved = T();
        if (Find(chunk, parameter.Identifier(), &saved)) {
            Set(parameter, saved);
        }
        return true;
    });
}

bool IsParameterAsSaved(const AAX_IParameter& parameter, AAX_CChunkDataParser& chunk) {
    return WithValue(parameter, [&]<class T>(const T& current) {
        T saved = T();
        return Find(chunk, parameter.Identifier(), &saved) && AreSame(saved, current);
    });
}
