#include "MeterFile.h"

#include "Interruption.h"
#include "NumberText.h"

namespace varno {

namespace {

constexpr int kTimeDecimals = 6;                 // microseconds: unlike for any two frames up to 384 kHz
constexpr std::size_t kPendingBytes = 64 * 1024; // handed to the system at once

} // namespace

MeterFile::MeterFile(const std::string& path, Overwrite overwrite, double rateHz,
                     const std::vector<std::string>& meters)
    : mFile(path, overwrite, throwIfInterrupted),
      mRateHz(rateHz),
      mPending("time_s") {
    for (const std::string& meter : meters) {
        mPending += "," + meter;
    }
    mPending += '\n';
}

void MeterFile::addRow(std::int64_t frame, std::span<const float> values) {
    mPending += textFromNumber(static_cast<double>(frame) / mRateHz, std::chars_format::fixed, kTimeDecimals);
    for (const float value : values) {
        mPending += ',';
        mPending += textFromNumber(value);
    }
    mPending += '\n';
    if (mPending.size() >= kPendingBytes) {
        flush();
    }
}

void MeterFile::flush() {
    mFile.write(mPending);
    mPending.clear();
}

void MeterFile::commit() {
    flush();
    mFile.commit();
}

} // namespace varno
