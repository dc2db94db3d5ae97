#include "wave_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

namespace platform::wave {
namespace {

// Real files hold a handful of chunks; a file of millions of empty ones would keep the walk
// busy for nothing.
constexpr int MaxChunks = 256;
constexpr unsigned MaxChannels = 64;
constexpr unsigned MinRate = 1000;
constexpr unsigned MaxRate = 384000; // the sound server's own limit

constexpr std::uint16_t TagPcm = 0x0001;
constexpr std::uint16_t TagMsAdpcm = 0x0002;
constexpr std::uint16_t TagFloat = 0x0003;
constexpr std::uint16_t TagALaw = 0x0006;
constexpr std::uint16_t TagMuLaw = 0x0007;
constexpr std::uint16_t TagImaAdpcm = 0x0011;
constexpr std::uint16_t TagExtensible = 0xFFFE;

// The rest of every sub-format GUID of the extensible format after its leading format tag.
constexpr std::array<std::uint8_t, 14> GuidTail = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                   0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

constexpr std::int16_t StandardCoefficients[7][2] = {{256, 0},  {512, -256}, {0, 0},     {192, 64},
                                                     {240, 0},  {460, -208}, {392, -232}};

std::uint32_t le(const std::uint8_t* p, int bytes)
{
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = v << 8 | p[i];
    return v;
}

std::int16_t le16s(const std::uint8_t* p)
{
    return std::int16_t(std::uint16_t(le(p, 2)));
}

bool isId(const std::uint8_t* p, const char* id)
{
    return std::memcmp(p, id, 4) == 0;
}

bool printableId(const std::uint8_t* p)
{
    return std::all_of(p, p + 4, [](std::uint8_t c) { return c >= 0x20 && c < 0x7F; });
}

std::optional<Format> parseFormat(std::span<const std::uint8_t> fmt)
{
    if (fmt.size() < 16)
        return {};
    const std::uint8_t* p = fmt.data();
    std::uint16_t tag = std::uint16_t(le(p, 2));
    Format f;
    f.channels = le(p + 2, 2);
    f.sampleRate = le(p + 4, 4);
    const unsigned blockAlign = le(p + 12, 2);
    const unsigned bits = le(p + 14, 2);
    const unsigned extra = fmt.size() >= 18 ? le(p + 16, 2) : 0;
    if (f.channels == 0 || f.channels > MaxChannels || f.sampleRate < MinRate || f.sampleRate > MaxRate)
        return {};
    if (tag == TagExtensible) {
        if (fmt.size() < 40 || extra < 22 || !std::equal(GuidTail.begin(), GuidTail.end(), p + 26))
            return {};
        tag = std::uint16_t(le(p + 24, 2));
    }
    auto plain = [&](Coding coding, unsigned sampleBytes) -> std::optional<Format> {
        if (blockAlign != f.channels * sampleBytes)
            return {};
        f.coding = coding;
        f.sampleBytes = sampleBytes;
        f.blockBytes = blockAlign;
        f.blockFrames = 1;
        return f;
    };
    switch (tag) {
    case TagPcm:
        if (bits == 0 || bits > 32)
            return {};
        return plain(Coding::Pcm, (bits + 7) / 8); // narrower samples sit in the high bits
    case TagFloat:
        if (bits != 32 && bits != 64)
            return {};
        return plain(Coding::Float, bits / 8);
    case TagALaw:
    case TagMuLaw:
        if (bits != 8)
            return {};
        return plain(tag == TagALaw ? Coding::ALaw : Coding::MuLaw, 1);
    case TagImaAdpcm: {
        // Per channel a 4-byte header, then groups of 4 bytes (8 samples) a channel in turn.
        const unsigned group = 4 * f.channels;
        if (bits != 4 || blockAlign <= group || (blockAlign - group) % group != 0)
            return {};
        f.coding = Coding::ImaAdpcm;
        f.blockBytes = blockAlign;
        f.blockFrames = 1 + (blockAlign - group) / group * 8;
        return f;
    }
    case TagMsAdpcm: {
        // Per channel a 7-byte header holding the first two samples, then a nibble a sample.
        const unsigned header = 7 * f.channels;
        if (bits != 4 || blockAlign < header)
            return {};
        f.coding = Coding::MsAdpcm;
        f.blockBytes = blockAlign;
        f.blockFrames = 2 + (blockAlign - header) * 2 / f.channels;
        if (extra >= 4 && fmt.size() >= 22) {
            const unsigned said = le(p + 18, 2); // a block may end in padding
            if (said >= 2 && said < f.blockFrames)
                f.blockFrames = said;
            f.predictors = le(p + 20, 2);
            if (f.predictors == 0 || f.predictors > MaxPredictors || extra < 4 + 4 * f.predictors ||
                fmt.size() < 22 + 4 * std::size_t(f.predictors))
                return {};
            for (unsigned i = 0; i < f.predictors; ++i) {
                f.coefficients[i][0] = le16s(p + 22 + 4 * i);
                f.coefficients[i][1] = le16s(p + 24 + 4 * i);
            }
        } else {
            f.predictors = 7;
            std::memcpy(f.coefficients, StandardCoefficients, sizeof StandardCoefficients);
        }
        return f;
    }
    default:
        return {};
    }
}

std::int16_t clamp16(long long v)
{
    return std::int16_t(std::clamp<long long>(v, INT16_MIN, INT16_MAX));
}

std::int16_t fromFloat(double x)
{
    if (std::isnan(x))
        return 0;
    return clamp16(std::llround(std::clamp(x, -1.0, 1.0) * 32768.0));
}

std::int16_t fromALaw(std::uint8_t a)
{
    a ^= 0x55;
    int t = (a & 0x0F) << 4;
    const int segment = (a & 0x70) >> 4;
    if (segment == 0)
        t += 8;
    else
        t = (t + 0x108) << (segment - 1);
    return std::int16_t((a & 0x80) ? t : -t);
}

std::int16_t fromMuLaw(std::uint8_t u)
{
    u = ~u;
    const int t = (((u & 0x0F) << 3) + 0x84) << ((u & 0x70) >> 4);
    return std::int16_t((u & 0x80) ? 0x84 - t : t - 0x84);
}

std::int16_t plainSample(const Format& f, const std::uint8_t* p)
{
    switch (f.coding) {
    case Coding::Pcm:
        if (f.sampleBytes == 1)
            return std::int16_t((p[0] - 128) * 256); // 8-bit samples are unsigned
        return le16s(p + f.sampleBytes - 2);
    case Coding::Float:
        if (f.sampleBytes == 4)
            return fromFloat(std::bit_cast<float>(le(p, 4)));
        return fromFloat(std::bit_cast<double>(std::uint64_t(le(p + 4, 4)) << 32 | le(p, 4)));
    case Coding::ALaw:
        return fromALaw(p[0]);
    case Coding::MuLaw:
        return fromMuLaw(p[0]);
    default:
        return 0;
    }
}

constexpr std::array<int, 89> ImaSteps = {
    7,     8,     9,     10,    11,    12,    13,    14,    16,    17,    19,    21,    23,    25,    28,
    31,    34,    37,    41,    45,    50,    55,    60,    66,    73,    80,    88,    97,    107,   118,
    130,   143,   157,   173,   190,   209,   230,   253,   279,   307,   337,   371,   408,   449,   494,
    544,   598,   658,   724,   796,   876,   963,   1060,  1166,  1282,  1411,  1552,  1707,  1878,  2066,
    2272,  2499,  2749,  3024,  3327,  3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845,  8630,
    9493,  10442, 11487, 12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};
constexpr std::array<int, 8> ImaIndexSteps = {-1, -1, -1, -1, 2, 4, 6, 8};

// frames: blockFrames interleaved frames of f.channels samples.
void imaBlock(const Format& f, const std::uint8_t* block, std::int16_t* frames)
{
    const unsigned channels = f.channels;
    for (unsigned c = 0; c < channels; ++c) {
        int predictor = le16s(block + 4 * c);
        int index = std::min<int>(block[4 * c + 2], 88);
        frames[c] = std::int16_t(predictor);
        const std::uint8_t* data = block + 4 * channels;
        for (unsigned frame = 1; frame < f.blockFrames; ++frame) {
            const unsigned n = frame - 1; // the channel's nibble number
            const std::uint8_t byte = data[(n / 8 * channels + c) * 4 + n % 8 / 2];
            const int nibble = n % 2 ? byte >> 4 : byte & 0x0F;
            const int step = ImaSteps[std::size_t(index)];
            int diff = step >> 3;
            if (nibble & 1)
                diff += step >> 2;
            if (nibble & 2)
                diff += step >> 1;
            if (nibble & 4)
                diff += step;
            predictor = clamp16(nibble & 8 ? predictor - diff : predictor + diff);
            index = std::clamp(index + ImaIndexSteps[nibble & 7], 0, 88);
            frames[frame * channels + c] = std::int16_t(predictor);
        }
    }
}

constexpr std::array<int, 16> MsAdaptation = {230, 230, 230, 230, 307, 409, 512, 614,
                                              768, 614, 512, 409, 307, 230, 230, 230};

void msBlock(const Format& f, const std::uint8_t* block, std::int16_t* frames)
{
    const unsigned channels = f.channels;
    struct State {
        int c1, c2, delta, sample1, sample2;
    };
    std::vector<State> state(channels);
    for (unsigned c = 0; c < channels; ++c) {
        const unsigned predictor = std::min<unsigned>(block[c], f.predictors - 1);
        state[c] = {f.coefficients[predictor][0], f.coefficients[predictor][1], le16s(block + channels + 2 * c),
                    le16s(block + 3 * channels + 2 * c), le16s(block + 5 * channels + 2 * c)};
        frames[c] = std::int16_t(state[c].sample2);
        frames[channels + c] = std::int16_t(state[c].sample1);
    }
    const std::uint8_t* data = block + 7 * channels;
    const std::size_t nibbles = std::size_t(f.blockFrames - 2) * channels;
    for (std::size_t i = 0; i < nibbles; ++i) {
        const int nibble = i % 2 ? data[i / 2] & 0x0F : data[i / 2] >> 4;
        State& s = state[i % channels];
        const long long predicted = (static_cast<long long>(s.sample1) * s.c1 + static_cast<long long>(s.sample2) * s.c2) / 256;
        const int sample = clamp16(predicted + static_cast<long long>(nibble >= 8 ? nibble - 16 : nibble) * s.delta);
        s.sample2 = s.sample1;
        s.sample1 = sample;
        // A file made to grow the step without end must not overflow it.
        s.delta = std::clamp(int(static_cast<long long>(MsAdaptation[std::size_t(nibble)]) * s.delta / 256), 16, INT_MAX / 768);
        frames[2 * channels + i] = std::int16_t(sample);
    }
}

} // namespace

std::optional<Layout> findWave(std::uint64_t fileSize, const ReadAt& readAt)
{
    std::array<std::uint8_t, 12> head{};
    if (fileSize < head.size() || readAt(0, head) != head.size() || !isId(head.data(), "RIFF") ||
        !isId(head.data() + 8, "WAVE"))
        return {};
    auto chunkIdAt = [&](std::uint64_t at, std::uint8_t* id) { return at + 4 <= fileSize && readAt(at, {id, 4}) == 4; };
    // The size in the RIFF header is often wrong in files written as a stream: the file's own
    // size bounds the walk.
    std::optional<Format> format;
    std::optional<std::uint64_t> dataOffset;
    std::uint64_t dataBytes = 0;
    std::uint64_t at = head.size();
    for (int n = 0; n < MaxChunks && !(format && dataOffset) && at + 8 <= fileSize; ++n) {
        std::array<std::uint8_t, 8> chunk{};
        if (readAt(at, chunk) != chunk.size())
            return {};
        const std::uint64_t body = at + 8;
        const std::uint64_t size = le(chunk.data() + 4, 4);
        const std::uint64_t present = std::min(size, fileSize - body);
        if (isId(chunk.data(), "fmt ") && !format) {
            if (present < size)
                return {}; // a format cut short or claiming more than the file holds
            std::array<std::uint8_t, 22 + 4 * MaxPredictors> bytes{};
            const std::size_t wanted = std::min<std::uint64_t>(size, bytes.size());
            if (readAt(body, {bytes.data(), wanted}) != wanted)
                return {};
            format = parseFormat({bytes.data(), wanted});
            if (!format)
                return {};
        } else if (isId(chunk.data(), "data") && !dataOffset) {
            // Samples cut short play as far as they go.
            dataOffset = body;
            dataBytes = present;
        }
        std::uint64_t next = body + size + (size & 1);
        // Some writers leave out the pad byte after a chunk of odd size.
        std::uint8_t padded[4], unpadded[4];
        if ((size & 1) && chunkIdAt(next, padded) && !printableId(padded) && chunkIdAt(next - 1, unpadded) &&
            printableId(unpadded))
            --next;
        at = next;
    }
    if (!format || !dataOffset)
        return {};
    return Layout{*format, *dataOffset, dataBytes / format->blockBytes};
}

std::size_t decodeBlocks(const Format& format, std::span<const std::uint8_t> in, std::span<std::int16_t> out)
{
    if (format.blockBytes == 0 || format.blockFrames == 0 || format.channels == 0)
        return 0;
    const std::size_t blocks = std::min(in.size() / format.blockBytes, out.size() / format.outBlockSamples());
    const unsigned channels = format.channels;
    const std::size_t samples = std::size_t(format.blockFrames) * channels;
    const bool mixDown = channels != format.outChannels();
    std::vector<std::int16_t> scratch(mixDown ? samples : 0);
    for (std::size_t b = 0; b < blocks; ++b) {
        const std::uint8_t* block = in.data() + b * format.blockBytes;
        std::int16_t* frames = mixDown ? scratch.data() : out.data() + b * samples;
        switch (format.coding) {
        case Coding::ImaAdpcm:
            imaBlock(format, block, frames);
            break;
        case Coding::MsAdpcm:
            msBlock(format, block, frames);
            break;
        default:
            for (unsigned c = 0; c < channels; ++c)
                frames[c] = plainSample(format, block + c * format.sampleBytes);
        }
        if (mixDown) {
            std::int16_t* mixed = out.data() + b * format.blockFrames;
            for (unsigned frame = 0; frame < format.blockFrames; ++frame) {
                long long sum = 0;
                for (unsigned c = 0; c < channels; ++c)
                    sum += scratch[frame * channels + c];
                mixed[frame] = std::int16_t(sum / channels);
            }
        }
    }
    return blocks;
}

} // namespace platform::wave
