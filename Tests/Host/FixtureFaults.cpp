#include "Tests/Host/FixtureFaults.h"

#include <atomic>

namespace varno::fixture {

namespace {

std::atomic<Fault> gFault{Fault::None};

} // namespace

FaultScope::FaultScope(Fault fault) {
    gFault = fault;
}

FaultScope::~FaultScope() {
    gFault = Fault::None;
}

bool has(Fault fault) {
    return gFault == fault;
}

} // namespace varno::fixture
