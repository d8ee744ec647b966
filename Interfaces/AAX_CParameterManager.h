/// The parameters of one instance.
#ifndef VARNO_INTERFACES_AAX_CPARAMETERMANAGER_H
#define VARNO_INTERFACES_AAX_CPARAMETERMANAGER_H

#include "AAX.h"
#include "AAX_IdentifierOrder.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class AAX_IAutomationDelegate;
class AAX_IParameter;

/// Owns parameters and finds them by identifier (exact, case-sensitive) and by index, in the order in which
/// they were added. Parameters that it hands out stay its own. Not synchronised.
class AAX_CParameterManager {
public:
    AAX_CParameterManager();
    AAX_CParameterManager(const AAX_CParameterManager&) = delete;
    AAX_CParameterManager& operator=(const AAX_CParameterManager&) = delete;
    ~AAX_CParameterManager();

    /// Says which automation (borrowed until replaced; null for none) is attached to parameters added from
    /// now on. [main]
    void Initialize(AAX_IAutomationDelegate* automationDelegate);

    /// Takes over `parameter`, attaches the automation delegate to it and puts it behind the others. A null
    /// parameter and one whose identifier is there already are refused: it stays the caller's. Returns
    /// whether it was taken over; when something throws, it was not. [main]
    bool AddParameter(AAX_IParameter* parameter);
    /// Destroys all parameters. [main]
    void RemoveAllParameters();

    /// The number of parameters. [main]
    int32_t NumParameters() const { return static_cast<int32_t>(mParameters.size()); }
    /// The parameter with an identifier; null for none, also for a null identifier. [main]
    AAX_IParameter* GetParameterByID(AAX_CParamID identifier) { return Find(identifier); }
    const AAX_IParameter* GetParameterByID(AAX_CParamID identifier) const { return Find(identifier); }
    /// The index of the parameter with an identifier; -1 for none, also for a null identifier. [main]
    int32_t GetParameterIndex(AAX_CParamID identifier) const;
    /// The parameter at an index; null for an index out of range. [main]
    AAX_IParameter* GetParameter(int32_t index) { return At(index); }
    const AAX_IParameter* GetParameter(int32_t index) const { return At(index); }

private:
    AAX_IParameter* Find(AAX_CParamID identifier) const;
    AAX_IParameter* At(int32_t index) const;

    AAX_IAutomationDelegate* mAutomationDelegate = nullptr;   ///< Borrowed.
    std::vector<std::unique_ptr<AAX_IParameter>> mParameters; ///< In index order.
    /// Borrowed from mParameters.
    std::map<std::string, AAX_IParameter*, AAX_SIdentifierOrder> mParametersByID;
};

#endif
