#include "engine/DenormalGuard.h"

#include <bit>
#include <cmath>
#include <vector>

#include "KernelTestHelpers.h"

namespace vorix::test {
namespace {

TEST(DenormalGuard, ValuesFollowTheGeneratorFromSeedOne) {
    SetGuardNoiseSeed(1);
    std::vector<float> out(4);
    const std::vector<float> zeros(4, 0.0f);
    AddGuardNoise(zeros.data(), out.data(), 4);
    // The generator worked out independently in 64-bit arithmetic.
    uint64_t seed = 1;
    for (int i = 0; i < 4; ++i) {
        seed = (seed * 1234567u + 890123u) % (uint64_t{1} << 32);
        const uint32_t bits = (static_cast<uint32_t>(seed) & 0x9E7F0000u) | 0x1E000000u;
        EXPECT_EQ(bits, std::bit_cast<uint32_t>(out[static_cast<size_t>(i)])) << "draw " << i;
    }
    EXPECT_EQ(static_cast<uint32_t>(seed), GuardNoiseSeed());
}

TEST(DenormalGuard, EveryValueIsTinyWithFixedExponentAndRandomSign) {
    SetGuardNoiseSeed(12345);
    std::vector<float> noise(4096, 0.0f);
    AddGuardNoise(noise.data(), noise.data(), 4096);
    int negative = 0;
    for (float v : noise) {
        EXPECT_EQ(60u, (std::bit_cast<uint32_t>(v) >> 23) & 0xFFu);
        EXPECT_GE(std::fabs(v), std::ldexp(1.0f, -67));
        EXPECT_LT(std::fabs(v), std::ldexp(1.0f, -66));
        negative += v < 0.0f;
    }
    EXPECT_GT(negative, 1500);
    EXPECT_LT(negative, 2600);
}

TEST(DenormalGuard, FourWayGeneratorEqualsOneStepAtATime) {
    for (int samples : OddBlockSizes()) {
        const std::vector<float> input = RandomBlock(samples, 3);
        std::vector<float> fast(input.size()), plain(input.size());
        SetGuardNoiseSeed(77u + static_cast<uint32_t>(samples));
        AddGuardNoise(input.data(), fast.data(), samples);
        const uint32_t fastSeed = GuardNoiseSeed();
        SetGuardNoiseSeed(77u + static_cast<uint32_t>(samples));
        AddGuardNoisePlain(input.data(), plain.data(), samples);
        ASSERT_TRUE(SameBits(fast.data(), plain.data(), samples));
        ASSERT_EQ(fastSeed, GuardNoiseSeed());
    }
}

}  // namespace
}  // namespace vorix::test
