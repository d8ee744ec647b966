/// A data model in a host that keeps its packets.
#ifndef VARNO_TESTS_SOURCE_DATAMODELFIXTURE_H
#define VARNO_TESTS_SOURCE_DATAMODELFIXTURE_H

#include "AAX_CString.h"
#include "ACF/ACFPtr.h"
#include "DemoGain_Parameters.h"
#include "Tests/Support/FakeInstanceHost.h"

#include <string>

namespace varno::test {

/// Initialised by `initialize`, not before. Requests for values wait until `answer`.
class DataModelFixture {
public:
    DataModelFixture() {
        host.offer(IID_IAAXControllerV1, &controller);
        host.offer(IID_IAAXAutomationDelegateV1, &automation);
    }
    DataModelFixture(const DataModelFixture&) = delete;
    DataModelFixture& operator=(const DataModelFixture&) = delete;
    ~DataModelFixture() { model->Uninitialize(); }

    AAX_Result initialize() { return model->Initialize(&host); }

    /// Gives a parameter a value as host automation does.
    void automate(const char* id, double value) {
        model->UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
    }
    /// Gives the parameters the values that they have asked for.
    void answer() {
        for (const auto& [id, value] : std::exchange(automation.requests, {})) {
            automate(id.c_str(), value);
        }
    }
    /// Computes coefficients; what is posted replaces what was.
    void generate() {
        controller.posts.clear();
        model->GenerateCoefficients();
    }
    /// The float posted last for a field.
    float posted(AAX_CFieldIndex field) const { return controller.latest(field).as<float>(); }
    double value(const char* id) const {
        double result = -1.0;
        model->GetParameterNormalizedValue(id, &result);
        return result;
    }

    FakeController controller;
    FakeAutomation automation;
    FakeHost host;
    ACFPtr<DemoGain_Parameters> model =
        ACFPtr<DemoGain_Parameters>::Retain(static_cast<DemoGain_Parameters*>(DemoGain_Parameters::Create()));
};

} // namespace varno::test

#endif
