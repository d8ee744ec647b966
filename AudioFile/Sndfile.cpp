#include "AudioFile/Sndfile.h"

namespace varno {

namespace {

struct ContainerRow {
    Container container;
    int major;
};

// The first row of a container is the one written.
constexpr ContainerRow kContainers[] = {
    {Container::kWav, SF_FORMAT_WAV}, {Container::kWav, SF_FORMAT_WAVEX}, {Container::kRf64, SF_FORMAT_RF64},
    {Container::kW64, SF_FORMAT_W64}, {Container::kAiff, SF_FORMAT_AIFF}, {Container::kCaf, SF_FORMAT_CAF},
    {Container::kAu, SF_FORMAT_AU},   {Container::kFlac, SF_FORMAT_FLAC}, {Container::kOgg, SF_FORMAT_OGG},
};

struct SampleRow {
    SampleFormat sample;
    int subtype;
};

// The first row of a format that the container holds is the one written; the ALAC and FLAC-in-Ogg codecs are
// read.
constexpr SampleRow kSamples[] = {
    {SampleFormat::kPcm8, SF_FORMAT_PCM_S8},        {SampleFormat::kPcm8, SF_FORMAT_PCM_U8},
    {SampleFormat::kPcm16, SF_FORMAT_PCM_16},       {SampleFormat::kPcm24, SF_FORMAT_PCM_24},
    {SampleFormat::kPcm32, SF_FORMAT_PCM_32},       {SampleFormat::kFloat, SF_FORMAT_FLOAT},
    {SampleFormat::kDouble, SF_FORMAT_DOUBLE},      {SampleFormat::kULaw, SF_FORMAT_ULAW},
    {SampleFormat::kALaw, SF_FORMAT_ALAW},          {SampleFormat::kVorbis, SF_FORMAT_VORBIS},
    {SampleFormat::kOpus, SF_FORMAT_OPUS},          {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_I},
    {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_II}, {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_III},
    {SampleFormat::kPcm16, SF_FORMAT_ALAC_16},      {SampleFormat::kPcm24, SF_FORMAT_ALAC_20},
    {SampleFormat::kPcm24, SF_FORMAT_ALAC_24},      {SampleFormat::kPcm32, SF_FORMAT_ALAC_32},
    {SampleFormat::kPcm16, SF_FORMAT_DWVW_16},      {SampleFormat::kPcm24, SF_FORMAT_DWVW_24},
};

Container containerOf(int major) {
    for (const ContainerRow& row : kContainers) {
        if (row.major == major) {
            return row.container;
        }
    }
    return Container::kOther;
}

SampleFormat sampleOf(int subtype) {
    for (const SampleRow& row : kSamples) {
        if (row.subtype == subtype) {
            return row.sample;
        }
    }
    return SampleFormat::kOther;
}

std::optional<int> majorOf(const AudioFormat& format) {
    if (format.container == Container::kWav && format.extensibleHeader) {
        return SF_FORMAT_WAVEX;
    }
    for (const ContainerRow& row : kContainers) {
        if (row.container == format.container) {
            return row.major;
        }
    }
    return std::nullopt;
}

// A file that takes everything and keeps nothing.
struct Nowhere {
    sf_count_t position = 0;
    sf_count_t length = 0;

    static Nowhere& of(void* user) { return *static_cast<Nowhere*>(user); }
    static sf_count_t getLength(void* user) { return of(user).length; }
    static sf_count_t tell(void* user) { return of(user).position; }
    static sf_count_t read(void*, sf_count_t, void*) { return 0; }

    static sf_count_t seek(sf_count_t offset, int whence, void* user) {
        const sf_count_t base = whence == SEEK_CUR   ? of(user).position
                                : whence == SEEK_END ? of(user).length
                                                     : 0;
        return of(user).position = base + offset;
    }

    static sf_count_t write(const void*, sf_count_t count, void* user) {
        of(user).position += count;
        if (of(user).position > of(user).length) {
            of(user).length = of(user).position;
        }
        return count;
    }
};

} // namespace

AudioFormat audioFormatOf(const SF_INFO& info) {
    AudioFormat format;
    const int major = info.format & SF_FORMAT_TYPEMASK;
    format.container = containerOf(major);
    format.sample = sampleOf(info.format & SF_FORMAT_SUBMASK);
    format.extensibleHeader = major == SF_FORMAT_WAVEX;
    format.rateHz = info.samplerate;
    format.channels = info.channels;
    format.frames = info.frames;
    return format;
}

std::optional<SF_INFO> sndfileInfoOf(const AudioFormat& format) {
    const std::optional<int> major = majorOf(format);
    if (!major) {
        return std::nullopt;
    }
    SF_INFO info{};
    info.samplerate = format.rateHz;
    info.channels = format.channels;
    for (const SampleRow& row : kSamples) {
        info.format = *major | row.subtype;
        if (row.sample == format.sample && sf_format_check(&info) == SF_TRUE) {
            return info;
        }
    }
    return std::nullopt;
}

bool canWrite(const AudioFormat& format) {
    std::optional<SF_INFO> info = sndfileInfoOf(format);
    if (!info) {
        return false;
    }
    Nowhere nowhere;
    SF_VIRTUAL_IO io{Nowhere::getLength, Nowhere::seek, Nowhere::read, Nowhere::write, Nowhere::tell};
    SNDFILE* file = sf_open_virtual(&io, SFM_WRITE, &*info, &nowhere);
    if (file == nullptr) {
        return false;
    }
    sf_close(file);
    return true;
}

} // namespace varno
