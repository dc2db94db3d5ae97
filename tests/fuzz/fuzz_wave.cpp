// Wave files of any bytes: finding the samples never reads outside the file or claims more than
// it holds, and decoding every block the file holds stays inside the buffers it is given.

#include "platform/wave_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto layout = wave::findWave(size, [&](std::uint64_t at, std::span<std::uint8_t> buffer) {
        if (at > size)
            std::abort(); // asked for a place no size in the file could lead to
        const std::size_t n = std::min<std::uint64_t>(buffer.size(), size - at);
        std::memcpy(buffer.data(), data + at, n);
        return n;
    });
    if (!layout)
        return 0;
    const wave::Format& f = layout->format;
    if (f.channels == 0 || f.blockBytes == 0 || f.blockFrames == 0 || f.outChannels() > 2 ||
        layout->dataOffset + layout->blocks * f.blockBytes > size)
        std::abort();
    // Exactly sized copies, so that a step past either end is caught.
    const std::vector<std::uint8_t> in(data + layout->dataOffset, data + layout->dataOffset + layout->blocks * f.blockBytes);
    std::vector<std::int16_t> out(layout->blocks * f.outBlockSamples());
    if (wave::decodeBlocks(f, in, out) != layout->blocks)
        std::abort();
    // Room for less than all of them: only whole blocks that fit.
    if (layout->blocks > 0) {
        std::vector<std::int16_t> short_(out.size() - 1);
        if (wave::decodeBlocks(f, in, short_) != layout->blocks - 1)
            std::abort();
    }
    return 0;
}
