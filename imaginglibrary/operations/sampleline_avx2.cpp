// Reads a picture along a line, between its pixels: the form for processors with AVX2.
#include "imaginglibrary/operations/columnsatonce.h"
#include "imaginglibrary/operations/sampleline.h"

#if defined(__SSE2__)

#include <immintrin.h>

#include <limits>

// What stands below may only be called where the processor has it; what the headers above define must run everywhere.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace imaginglibrary {

namespace {

// Sixteen bytes of two samples side by side.
[[gnu::always_inline]] inline __m256i LoadBoth(const void* first, const void* second) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(first))),
                                   _mm_loadu_si128(static_cast<const __m128i*>(second)), 1);
}

// The weighted sum of four rows, two neighbouring pixels of each half and the two behind them. `row` gives that of a
// number; `upper` and `lower` are the weights of the first two rows in turns and of the others.
struct WideSums {
    __m256i left;
    __m256i right;
};

template <class Row> [[gnu::always_inline]] inline WideSums SumOfFour(Row row, __m256i upper, __m256i lower) {
    const __m256i row0 = row(0), row1 = row(1);
    const __m256i row2 = row(2), row3 = row(3);
    return {_mm256_add_epi16(_mm256_maddubs_epi16(_mm256_unpacklo_epi8(row0, row1), upper),
                             _mm256_maddubs_epi16(_mm256_unpacklo_epi8(row2, row3), lower)),
            _mm256_add_epi16(_mm256_maddubs_epi16(_mm256_unpackhi_epi8(row0, row1), upper),
                             _mm256_maddubs_epi16(_mm256_unpackhi_epi8(row2, row3), lower))};
}

// One of the two samples that are worked out together.
struct Sample {
    const std::uint8_t* pixels;
    const std::int8_t (*vertical)[16];
    const std::int16_t (*horizontal)[8];
};

// Of each sample the weighted pixels, the first and the third summed up, and the second and the fourth.
[[gnu::always_inline]] inline __m256i HalfSumsOfBoth(const Sample& first, const Sample& second, std::size_t rowBytes) {
    const auto row = [&](std::size_t i) __attribute__((always_inline)) {
        return LoadBoth(first.pixels + i * rowBytes, second.pixels + i * rowBytes);
    };
    const WideSums sums = SumOfFour(row, LoadBoth(first.vertical[0], second.vertical[0]),
                                    LoadBoth(first.vertical[1], second.vertical[1]));
    return _mm256_add_epi16(_mm256_mulhi_epi16(sums.left, LoadBoth(first.horizontal[0], second.horizontal[0])),
                            _mm256_mulhi_epi16(sums.right, LoadBoth(first.horizontal[1], second.horizontal[1])));
}

// Four samples as bytes, of the half sums of two and two.
[[gnu::always_inline]] inline __m128i FinishedFour(__m256i firstTwo, __m256i lastTwo) {
    const __m256i sums =
        _mm256_add_epi16(_mm256_unpacklo_epi64(firstTwo, lastTwo), _mm256_unpackhi_epi64(firstTwo, lastTwo));
    const __m256i rounded = _mm256_srai_epi16(_mm256_add_epi16(sums, _mm256_set1_epi16(18)), 5);
    const __m256i bytes = _mm256_packus_epi16(rounded, rounded); // the first and third; the second and fourth
    return _mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
}

// Stores `count` samples, four at a time, of which `next` gives the half sums of two; gives back how many are left.
template <class Next>
[[gnu::always_inline]] inline std::size_t StoreInFours(std::uint8_t* pixels, std::size_t count, Next next) {
    for (; count >= 4; count -= 4, pixels += 16) {
        const __m256i firstTwo = next();
        const __m256i lastTwo = next();
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), FinishedFour(firstTwo, lastTwo));
    }
    return count;
}

[[gnu::always_inline]] inline __m256i LoadBytes(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

[[gnu::always_inline]] inline __m256i InBothHalves(const std::int8_t (&weights)[16]) {
    return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(weights)));
}

// The weighted sums of four rows over columns from `row` on, eight at a time.
void SumColumns(const std::uint8_t* row, std::size_t rowBytes, const std::int8_t (&weights)[2][16], std::int16_t* sums,
                std::size_t count) {
    const __m256i upper = InBothHalves(weights[0]), lower = InBothHalves(weights[1]);
    for (std::size_t column = 0; column < count; column += 8, row += 32, sums += 32) {
        const auto rowAt = [&](std::size_t i) __attribute__((always_inline)) { return LoadBytes(row + i * rowBytes); };
        const WideSums wide = SumOfFour(rowAt, upper, lower);
        auto* const to = reinterpret_cast<__m256i*>(sums);
        _mm256_store_si256(to, _mm256_permute2x128_si256(wide.left, wide.right, 0x20));
        _mm256_store_si256(to + 1, _mm256_permute2x128_si256(wide.left, wide.right, 0x31));
    }
}

void SampleAlongRowWide(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                        std::size_t count) {
    alignas(32) std::int16_t sums[ColumnsAtOnce::Room * 4];
    while (count >= 4) {
        const ColumnsAtOnce columns(way, count);
        SumColumns(level.Padded() + SampleWay::WholeOf(way.y) * level.RowBytes() + columns.first * 4, level.RowBytes(),
                   kernel.vertical[SampleWay::PhaseOf(way.y)], sums, columns.count);
        const auto sumsAt = [&](std::uint32_t place) __attribute__((always_inline)) {
            return sums + (SampleWay::WholeOf(place) - columns.first) * 4;
        };
        const auto nextTwo = [&]() __attribute__((always_inline)) {
            const std::int16_t* const first = sumsAt(way.x);
            const auto& firstWeights = kernel.horizontal[SampleWay::PhaseOf(way.x)];
            way.Advance();
            const std::int16_t* const second = sumsAt(way.x);
            const auto& secondWeights = kernel.horizontal[SampleWay::PhaseOf(way.x)];
            way.Advance();
            return _mm256_add_epi16(
                _mm256_mulhi_epi16(LoadBoth(first, second), LoadBoth(firstWeights[0], secondWeights[0])),
                _mm256_mulhi_epi16(LoadBoth(first + 8, second + 8), LoadBoth(firstWeights[1], secondWeights[1])));
        };
        const std::size_t done = columns.samples - StoreInFours(pixels, columns.samples, nextTwo);
        pixels += done * 4;
        count -= done;
    }
    SampleLineSse2(level, kernel, way, pixels, count);
}

// Where some samples on a way find what they need. Worked out for all at once, which takes less than one by one.
struct Places {
    static constexpr std::size_t Count = 32;

    Places(const SampleWay& way, std::size_t rowBytes) {
        const __m256i bytesPerRow = _mm256_set1_epi32(static_cast<int>(rowBytes));
        const __m256i stepX = _mm256_slli_epi32(_mm256_set1_epi32(way.stepX), 3);
        const __m256i stepY = _mm256_slli_epi32(_mm256_set1_epi32(way.stepY), 3);
        __m256i x = FirstEight(way.x, way.stepX);
        __m256i y = FirstEight(way.y, way.stepY);
        for (std::size_t i = 0; i < Count; i += 8) {
            const __m256i rows = _mm256_mullo_epi32(_mm256_srli_epi32(y, SampleWay::UnitBits), bytesPerRow);
            const __m256i columns = _mm256_slli_epi32(_mm256_srli_epi32(x, SampleWay::UnitBits), 2);
            Store(pixels + i, _mm256_add_epi32(rows, columns));
            Store(down + i, WeightBytes(y));
            Store(across + i, WeightBytes(x));
            x = _mm256_add_epi32(x, stepX);
            y = _mm256_add_epi32(y, stepY);
        }
    }

    // How many bytes the first pixel lies behind the corner of the padding, and the weights behind those of fraction 0.
    alignas(32) std::uint32_t pixels[Count];
    alignas(32) std::uint32_t down[Count];
    alignas(32) std::uint32_t across[Count];

  private:
    static __m256i FirstEight(std::uint32_t place, std::int32_t step) {
        const __m256i numbers = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
        return _mm256_add_epi32(_mm256_set1_epi32(static_cast<int>(place)),
                                _mm256_mullo_epi32(_mm256_set1_epi32(step), numbers));
    }

    static __m256i WeightBytes(__m256i places) {
        constexpr std::size_t Bytes = sizeof SampleKernel::vertical[0];
        static_assert(Bytes == sizeof SampleKernel::horizontal[0] && Bytes == 32);
        const __m256i phases = _mm256_srli_epi32(places, SampleWay::UnitBits - SampleKernel::PhaseBits);
        return _mm256_slli_epi32(_mm256_and_si256(phases, _mm256_set1_epi32(SampleKernel::Phases - 1)), 5);
    }

    static void Store(std::uint32_t* to, __m256i eight) { _mm256_store_si256(reinterpret_cast<__m256i*>(to), eight); }
};

template <class Weights> [[gnu::always_inline]] inline Weights* Behind(Weights* weights, std::uint32_t bytes) {
    return reinterpret_cast<Weights*>(reinterpret_cast<const char*>(weights) + bytes);
}

void SampleAcrossRowsWide(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                          std::size_t count) {
    const std::size_t rowBytes = level.RowBytes();
    while (count >= 4) {
        const Places places(way, rowBytes);
        std::size_t at = 0;
        const auto next = [&]() __attribute__((always_inline)) {
            const std::uint8_t* const first = level.Padded() + places.pixels[at];
            _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(first) + way.ahead),
                         _MM_HINT_T0);
            const Sample sample{first, Behind(kernel.vertical[0], places.down[at]),
                                Behind(kernel.horizontal[0], places.across[at])};
            ++at;
            return sample;
        };
        const auto nextTwo = [&]() __attribute__((always_inline)) {
            const Sample first = next();
            const Sample second = next();
            return HalfSumsOfBoth(first, second, rowBytes);
        };
        const std::size_t wanted = std::min(count, Places::Count);
        const std::size_t done = wanted - StoreInFours(pixels, wanted, nextTwo);
        way.Advance(static_cast<std::uint32_t>(done));
        pixels += done * 4;
        count -= done;
    }
    SampleLineSse2(level, kernel, way, pixels, count);
}

// Whether every pixel's distance from the corner is a number of 32 bits.
bool IsWithinReach(const PyramidLevel& level) {
    const std::uint64_t rows = std::uint64_t{level.Height()} + 2 * PyramidLevel::Padding;
    return rows * level.RowBytes() <= std::numeric_limits<std::uint32_t>::max();
}

} // namespace

void SampleLineAvx2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    if (ColumnsAtOnce::Suit(way, count)) {
        SampleAlongRowWide(level, kernel, way, pixels, count);
    } else if (IsWithinReach(level)) {
        SampleAcrossRowsWide(level, kernel, way, pixels, count);
    } else {
        SampleLineSse2(level, kernel, way, pixels, count);
    }
}

} // namespace imaginglibrary

#pragma GCC pop_options

#endif
