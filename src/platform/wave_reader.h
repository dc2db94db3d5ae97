#pragma once
// Wave files as people's tools write them, read without trusting any size in them: `fmt ` and
// `data` are found wherever they stand among the other chunks, every size is checked against
// the file, and every coding decodes to 16-bit PCM. Plain C++ with no Qt: the fuzz target links
// this very file.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace platform::wave {

enum class Coding { Pcm, Float, ALaw, MuLaw, ImaAdpcm, MsAdpcm };

constexpr unsigned MaxPredictors = 32;

struct Format {
    Coding coding = Coding::Pcm;
    unsigned channels = 0; // as stored in the file
    unsigned sampleRate = 0;
    unsigned sampleBytes = 0; // one stored sample (0 for the adaptive codings)
    // The samples come in blocks that decode on their own: a frame for the plain codings, an
    // adaptive coding's block of many frames.
    unsigned blockBytes = 0;
    unsigned blockFrames = 0;
    std::int16_t coefficients[MaxPredictors][2] = {}; // MS ADPCM's predictor pairs
    unsigned predictors = 0;

    // More than two channels are mixed down to one.
    unsigned outChannels() const { return channels <= 2 ? channels : 1; }
    std::size_t outBlockSamples() const { return std::size_t(blockFrames) * outChannels(); }
};

struct Layout {
    Format format;
    std::uint64_t dataOffset = 0;
    std::uint64_t blocks = 0; // whole blocks the file really holds
};

// Reads up to buffer.size() bytes at offset into buffer and says how many it read.
using ReadAt = std::function<std::size_t(std::uint64_t offset, std::span<std::uint8_t> buffer)>;

// Where the samples of a wave file of fileSize bytes are and how to decode them; nothing when
// the file is no wave or one in a coding this reader does not know.
std::optional<Layout> findWave(std::uint64_t fileSize, const ReadAt& readAt);

// Decodes as many whole blocks of in as out has room for, outBlockSamples() interleaved
// samples a block; returns the number of blocks decoded.
std::size_t decodeBlocks(const Format& format, std::span<const std::uint8_t> in, std::span<std::int16_t> out);

} // namespace platform::wave
