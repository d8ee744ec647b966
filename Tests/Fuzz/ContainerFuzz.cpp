// Chunks of audio files: where they and the samples lie, and what is carried from file to file.
#include "AudioFile/CarryOver.h"
#include "AudioFile/ContainerChunks.h"
#include "AudioFile/Metadata.h"
#include "Files/FileError.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/MemoryFile.h"

#include <algorithm>
#include <numeric>

namespace varno::fuzz {
namespace {

// What of the product a planted fault replaces.
struct ContainerCalls {
    std::function<ContainerChunks(int)> read = readContainerChunks;
    std::function<FileMetadata(int, const ContainerChunks&, const AudioFormat&)> readMetadata =
        readFileMetadata;
    std::function<void(int, ChunkFamily, const std::vector<CarriedChunk>&, const std::string&)> append =
        appendChunks;
};

std::string bigNumber(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

std::string littleNumber(std::uint64_t value, int bytes) {
    std::string text = bigNumber(value, bytes);
    return {text.rbegin(), text.rend()};
}

std::string riffChunk(const std::string& id, const std::string& data) {
    return id + littleNumber(data.size(), 4) + data + std::string(data.size() % 2, '\0');
}

std::string bigChunk(const std::string& id, const std::string& data, int sizeBytes) {
    const std::size_t padding = sizeBytes == 4 ? data.size() % 2 : 0;
    return id + bigNumber(data.size(), sizeBytes) + data + std::string(padding, '\0');
}

// Files with a few samples, and chunks behind them.
std::string wavWith(const std::string& chunks) {
    return riffChunk("RIFF",
                     "WAVE" + riffChunk("fmt ", std::string(16, '\1')) + riffChunk("data", "abcd") + chunks);
}

std::string aiffWith(const std::string& chunks) {
    return bigChunk("FORM",
                    "AIFF" + bigChunk("COMM", std::string(18, '\1'), 4) +
                        bigChunk("SSND", std::string(8, '\0') + "abcd", 4) + chunks,
                    4);
}

std::string cafWith(const std::string& chunks) {
    return std::string("caff\0\1\0\0", 8) + bigChunk("desc", std::string(32, '\1'), 8) +
           bigChunk("data", std::string(4, '\0') + "abcd", 8) + chunks;
}

std::string emptyFile(ChunkFamily family) {
    return family == ChunkFamily::kRiff   ? wavWith("")
           : family == ChunkFamily::kAiff ? aiffWith("")
                                          : cafWith("");
}

AudioFormat formatOf(Container container) {
    AudioFormat format;
    format.container = container;
    format.rateHz = 48000;
    format.channels = 1;
    format.frames = 2;
    return format;
}

// The container by which the metadata of a family are read.
Container containerOf(ChunkFamily family, std::string_view bytes) {
    switch (family) {
    case ChunkFamily::kRiff:
        return Container::kWav;
    case ChunkFamily::kAiff:
        return Container::kAiff;
    case ChunkFamily::kCaf:
        return Container::kCaf;
    default:
        return bytes.starts_with(".snd") ? Container::kAu : Container::kW64;
    }
}

class ContainerTarget : public FuzzTarget {
public:
    explicit ContainerTarget(ContainerCalls calls = {})
        : mCalls(std::move(calls)) {}

    void run(std::string_view input) override {
        mFile.set(input);
        const ContainerChunks container = mCalls.read(mFile.descriptor());
        require(mFile.position() == 0, "the file's position has moved");
        checkChunks(container, static_cast<std::int64_t>(input.size()));
        if (container.samples) {
            checkSamples(container);
            checkHead(container);
        }
        const AudioFormat format = formatOf(containerOf(container.family, input));
        const FileMetadata metadata = mCalls.readMetadata(mFile.descriptor(), container, format);
        require(mFile.position() == 0, "the file's position has moved");
        checkMetadata(metadata, input.size());
        for (const Container output : {Container::kWav, Container::kAiff, Container::kCaf, Container::kFlac,
                                       Container::kOgg, Container::kAu}) {
            const CarriedOver carried = carryOver(metadata, formatOf(output));
            if (familyOf(output) != ChunkFamily::kNone) {
                checkCarried(carried.chunks, output);
            }
        }
    }

private:
    static void checkChunks(const ContainerChunks& container, std::int64_t fileBytes) {
        require(container.fileBytes == fileBytes, "the file has another size");
        std::int64_t end = 0;
        for (const ContainerChunk& chunk : container.chunks) {
            require(chunk.id.size() == 4, "an identifier has not four characters");
            require(end <= fileBytes, "a chunk follows one that reaches beyond the end");
            require(chunk.dataOffset > end && chunk.dataBytes >= 0,
                    "a chunk does not lie behind the one before");
            // Of AU, the one chunk is where the header has it.
            require(chunk.dataOffset <= fileBytes || container.chunks.size() == 1,
                    "a chunk begins behind the end");
            end = chunk.dataOffset + std::min(chunk.dataBytes, fileBytes + 1);
        }
        // Whoever reads a pipe reads until so many are there.
        require(container.wantedBytes == 0 || container.wantedBytes > fileBytes,
                "bytes are wanted that are there");
    }

    static void checkSamples(const ContainerChunks& container) {
        const SampleExtent& samples = *container.samples;
        require(samples.offset > 0 && samples.limit >= 0, "samples have a negative place or size");
        require(samples.present >= 0 && samples.present <= samples.limit,
                "more samples are there than can be");
        require(samples.present == 0 || samples.offset + samples.present <= container.fileBytes,
                "samples lie behind the end of the file");
        const SizeField& field = container.samplesSize;
        require((field.bytes == 4 || field.bytes == 8) && field.offset > 0 &&
                    field.offset + field.bytes <= container.fileBytes,
                "the size of the samples is stated nowhere");
    }

    void checkHead(const ContainerChunks& container) const {
        constexpr std::int64_t kZeros = 4096;
        try {
            const FileDescriptor head = copyHead(mFile.descriptor(), container, "input");
            const ContainerChunks again = mCalls.read(head.get());
            require(again.fileBytes == container.samples->offset + kZeros, "a head has another length");
            require(again.samples && again.samples->offset == container.samples->offset,
                    "a head has its samples elsewhere");
            require(again.samples->isStated && again.samples->present == kZeros,
                    "a head does not state its samples");
        } catch (const FileError&) {
            require(container.samples->offset > container.fileBytes, "a head is refused that is there");
        }
    }

    static void checkMetadata(const FileMetadata& metadata, std::size_t fileBytes) {
        std::size_t bytes = 0;
        for (const CarriedChunk& chunk : metadata.chunks) {
            bytes += chunk.data.size();
        }
        require(bytes <= fileBytes, "more is carried than the file has");
    }

    // What is appended to a file is read from it as it was.
    void checkCarried(const std::vector<CarriedChunk>& chunks, Container output) {
        const ChunkFamily family = familyOf(output);
        mOutput.set(emptyFile(family));
        mCalls.append(mOutput.descriptor(), family, chunks, "output");
        const ContainerChunks container = mCalls.read(mOutput.descriptor());
        const FileMetadata read = mCalls.readMetadata(mOutput.descriptor(), container, formatOf(output));
        require(read.chunks == chunks, "chunks are not read as they were written");
        const std::string whole = mOutput.content();
        require(family == ChunkFamily::kCaf || sizeOf(whole, family) + 8 == whole.size(),
                "the file states another length");
    }

    static std::uint64_t sizeOf(const std::string& file, ChunkFamily family) {
        std::string field = file.substr(4, 4);
        if (family == ChunkFamily::kRiff) {
            std::ranges::reverse(field);
        }
        return std::accumulate(
            field.begin(), field.end(), std::uint64_t{0},
            [](std::uint64_t sum, char byte) { return sum << 8 | static_cast<unsigned char>(byte); });
    }

    ContainerCalls mCalls;
    MemoryFile mFile;
    MemoryFile mOutput;
};

std::vector<std::string> containerSeeds() {
    const std::string info = riffChunk("LIST", "INFO" + riffChunk("INAM", "title") + riffChunk("IXYZ", "x"));
    const std::string labels = riffChunk("LIST", "adtl" + riffChunk("labl", littleNumber(1, 4) + "one") +
                                                     riffChunk("note", littleNumber(1, 4) + "two"));
    const std::string cafInfo = bigChunk("info",
                                         bigNumber(2, 4) + std::string("title\0one\0year\0"
                                                                       "1999\0",
                                                                       20),
                                         8);
    const std::string ds64 =
        riffChunk("ds64", littleNumber(100, 8) + littleNumber(4, 8) + std::string(12, '\0'));
    const std::string uuid(12, '\x55');
    const std::string w64 = "riff" + uuid + littleNumber(100, 8) + "wave" + uuid + "fmt " + uuid +
                            littleNumber(40, 8) + std::string(16, '\1') + "data" + uuid +
                            littleNumber(28, 8) + "abcd";
    return {wavWith(info + labels + riffChunk("bext", std::string(20, 'b'))),
            aiffWith(bigChunk("NAME", "title", 4) + bigChunk("ANNO", "text", 4) +
                     bigChunk("MARK", bigNumber(0, 2), 4)),
            cafWith(cafInfo + bigChunk("uuid", "x", 8)),
            "RF64\xFF\xFF\xFF\xFFWAVE" + ds64 +
                "data\xFF\xFF\xFF\xFF"
                "abcd" +
                info,
            w64,
            ".snd" + bigNumber(32, 4) + bigNumber(4, 4) + std::string(12, '\1') +
                std::string("comment\0abcd", 12),
            "RIFF" + littleNumber(0, 4) + "WAVEdata" + littleNumber(0, 4) + "LIST" + littleNumber(4, 4) +
                "INFO",
            wavWith(riffChunk("id3 ", std::string("ID3\3\0\0\0\0\0\x0F"
                                                  "TIT2\0\0\0\5\0\0\0text",
                                                  25))),
            "RIFX",
            ""};
}

// The planted faults.

ContainerChunks readWithoutPadding(int descriptor) {
    ContainerChunks container = readContainerChunks(descriptor);
    for (std::size_t i = 1; i < container.chunks.size(); ++i) {
        container.chunks[i].dataOffset -= container.chunks[i - 1].dataBytes % 2;
    }
    return container;
}

ContainerChunks readBeyondTheEnd(int descriptor) {
    ContainerChunks container = readContainerChunks(descriptor);
    if (container.samples) {
        container.samples->present = container.samples->limit;
    }
    return container;
}

ContainerChunks readWantingNothing(int descriptor) {
    ContainerChunks container = readContainerChunks(descriptor);
    container.wantedBytes = std::min(container.wantedBytes, container.fileBytes);
    return container;
}

void appendWithoutLength(int descriptor, ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                         const std::string& name) {
    char field[4] = {};
    readAt(descriptor, 4, field, sizeof field);
    appendChunks(descriptor, family, chunks, name);
    writeAt(descriptor, 4, {field, sizeof field}, name);
}

FileMetadata readShortChunks(int descriptor, const ContainerChunks& container, const AudioFormat& format) {
    FileMetadata metadata = readFileMetadata(descriptor, container, format);
    for (CarriedChunk& chunk : metadata.chunks) {
        chunk.data.resize(chunk.data.size() / 2);
    }
    return metadata;
}

} // namespace

FuzzSubject containerSubject() {
    return {"container",
            makerOf<ContainerTarget>(),
            containerSeeds(),
            {{"chunks are not aligned", makerOf<ContainerTarget>(ContainerCalls{readWithoutPadding})},
             {"samples reach beyond the end", makerOf<ContainerTarget>(ContainerCalls{readBeyondTheEnd})},
             {"what is there is wanted", makerOf<ContainerTarget>(ContainerCalls{readWantingNothing})},
             {"half of a chunk is lost",
              makerOf<ContainerTarget>(ContainerCalls{.readMetadata = readShortChunks})},
             {"the length of the file stays",
              makerOf<ContainerTarget>(ContainerCalls{.append = appendWithoutLength})}},
            {"AudioFile/ContainerChunks.cpp", "AudioFile/Metadata.cpp", "AudioFile/ChunkTexts.cpp",
             "AudioFile/CarryOver.cpp"}};
}

} // namespace varno::fuzz
