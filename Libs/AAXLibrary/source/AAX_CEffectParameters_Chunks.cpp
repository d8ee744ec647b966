// Saved settings.

#include "AAX_CEffectParameters.h"

#include "EntryPoint.h"
#include "SavedParameter.h"

#include <cstring>
#include <utility>

namespace {

// Kind of the one chunk there is.
constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
constexpr char kChunkName[] = "Complete Controls State";
static_assert(sizeof(kChunkName) <= sizeof(AAX_SPlugInChunk::fName));

// The data model's parser, taken out of it for one operation and put back empty at its end: a parameter that
// is set calls the host, and the host may save, restore or compare before it returns.
class BorrowedParser {
public:
    explicit BorrowedParser(AAX_CChunkDataParser& owner)
        : mOwner(owner),
          mParser(std::move(owner)) {
        mParser.Clear();
    }
    BorrowedParser(const BorrowedParser&) = delete;
    BorrowedParser& operator=(const BorrowedParser&) = delete;
    ~BorrowedParser() {
        mParser.Clear();
        mOwner = std::move(mParser);
    }

    AAX_CChunkDataParser* operator->() { return &mParser; }
    AAX_CChunkDataParser& operator*() { return mParser; }

private:
    AAX_CChunkDataParser& mOwner;
    AAX_CChunkDataParser mParser;
};

} // namespace

void AAX_CEffectParameters::FilterParameterIDOnSave(AAX_CParamID paramID) {
    if (paramID != nullptr) {
        mFilteredParameters.emplace(paramID);
    }
}

AAX_Result AAX_CEffectParameters::GetNumberOfChunks(int32_t* outCount) const {
    return WriteOut(outCount, 1);
}

AAX_Result AAX_CEffectParameters::GetChunkIDFromIndex(int32_t index, AAX_CTypeID* outID) const {
    return index == 0 ? WriteOut(outID, kChunkID)
                      : WriteOut(outID, AAX_CTypeID{0}, AAX_ERROR_INVALID_CHUNK_INDEX);
}

void AAX_CEffectParameters::BuildChunkData(AAX_CChunkDataParser& parser) const {
    VisitSavedParameters(mParameterManager, mFilteredParameters, [&parser](const AAX_IParameter& parameter) {
        SaveParameter(parameter, parser);
        return true;
    });
}

AAX_Result AAX_CEffectParameters::GetChunkSize(AAX_CTypeID chunkID, uint32_t* outSize) {
    if (outSize == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outSize = 0;
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&]() -> AAX_Result {
        BorrowedParser parser(mChunkParser);
        BuildChunkData(*parser);
        mChunkSize = parser->GetChunkDataSize();
        if (mChunkSize < 0) {
            return AAX_ERROR_INCORRECT_CHUNK_SIZE;
        }
        *outSize = static_cast<uint32_t>(mChunkSize);
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) {
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    if (chunk == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&]() -> AAX_Result {
        BorrowedParser parser(mChunkParser);
        BuildChunkData(*parser);
        const int32_t size = parser->GetChunkDataSize();
        if (size != mChunkSize || size == 0) {
            return AAX_ERROR_INCORRECT_CHUNK_SIZE;
        }
        chunk->fVersion = parser->GetChunkVersion();
        std::memset(chunk->fName, 0, sizeof(chunk->fName));
        std::memcpy(chunk->fName, kChunkName, sizeof(kChunkName));
        return parser->GetChunkData(chunk);
    });
}

AAX_Result AAX_CEffectParameters::SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) {
    if (chunkID != kChunkID) {
        return AAX_ERROR_INVALID_CHUNK_ID;
    }
    if (chunk == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        BorrowedParser parser(mChunkParser);
        parser->LoadChunk(chunk);
        VisitSavedParameters(mParameterManager, mFilteredParameters, [&parser](AAX_IParameter& parameter) {
            RestoreParameter(parameter, *parser);
            return true;
        });
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::CompareActiveChunk(const AAX_SPlugInChunk* chunk, uint8_t* outIsEqual) {
    if (chunk == nullptr || outIsEqual == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    // The chunk of another plug-in or of another kind does not compare with these values: they count as
    // unchanged.
    if (chunk->fChunkID != kChunkID) {
        *outIsEqual = 1;
        return AAX_SUCCESS;
    }
    *outIsEqual = 0;
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        BorrowedParser parser(mChunkParser);
        parser->LoadChunk(chunk);
        const bool isEqual = VisitSavedParameters(
            mParameterManager, mFilteredParameters,
            [&parser](const AAX_IParameter& parameter) { return IsParameterAsSaved(parameter, *parser); });
        *outIsEqual = isEqual ? 1 : 0;
        return AAX_SUCCESS;
    });
}
