#include "engine/SectionCascade.h"

#include <string>

#include "KernelTestHelpers.h"

namespace vorix::test {
namespace {

// Two identical sets of filters: one runs the fast kernel, the other the plain one.
struct Twins {
    Twins(int count, uint32_t seed) : fast(count, seed), plain(count, seed) {}
    RandomSections fast;
    RandomSections plain;

    ::testing::AssertionResult StatesAgree() {
        for (int j = 0; j < fast.size(); ++j) {
            auto r = SameState(fast[static_cast<size_t>(j)], plain[static_cast<size_t>(j)]);
            if (!r) return r << " at filter " << j;
        }
        return ::testing::AssertionSuccess();
    }
};

// Every instruction set the cascades are built for that this processor can run.
std::vector<CascadeIsa> SupportedIsas() {
    std::vector<CascadeIsa> isas;
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx512}) {
        if (CascadeIsaSupported(isa)) isas.push_back(isa);
    }
    return isas;
}

class SectionCascade : public ::testing::TestWithParam<CascadeIsa> {};

INSTANTIATE_TEST_SUITE_P(Isa, SectionCascade, ::testing::ValuesIn(SupportedIsas()),
                         [](const auto& info) {
                             return std::string(info.param == CascadeIsa::Sse2 ? "Sse2" : "Avx512");
                         });

TEST_P(SectionCascade, MonoEqualsPlainKernelBitForBitOverOddSizesAndCascadeLengths) {
    for (int filters = 1; filters <= 13; ++filters) {
        for (int samples : OddBlockSizes()) {
            SCOPED_TRACE(::testing::Message() << filters << " filters, " << samples << " samples");
            Twins twins(filters, 100u + static_cast<uint32_t>(filters));
            std::vector<float> fast = RandomBlock(samples, static_cast<uint32_t>(samples));
            std::vector<float> plain = fast;
            // Two blocks in a row: the second starts from state the first left behind.
            for (int round = 0; round < 2; ++round) {
                ProcessSectionCascadeOn(GetParam(), twins.fast.data(), filters, fast.data(), samples);
                ProcessSectionCascadePlain(twins.plain.data(), filters, plain.data(), samples);
                ASSERT_TRUE(SameBits(fast.data(), plain.data(), samples));
                ASSERT_TRUE(twins.StatesAgree());
            }
        }
    }
}

TEST_P(SectionCascade, StereoEqualsPlainKernelPerChannelBitForBit) {
    for (int filters : {1, 2, 3, 4, 5, 7, 10, 16}) {
        for (int samples : OddBlockSizes()) {
            SCOPED_TRACE(::testing::Message() << filters << " filters, " << samples << " samples");
            Twins left(filters, 7u * static_cast<uint32_t>(filters));
            Twins right(filters, 11u * static_cast<uint32_t>(filters) + 1u);
            std::vector<float> fastL = RandomBlock(samples, 1), fastR = RandomBlock(samples, 2);
            std::vector<float> plainL = fastL, plainR = fastR;
            for (int round = 0; round < 2; ++round) {
                ProcessSectionCascadeStereoOn(GetParam(), left.fast.data(), right.fast.data(),
                                              filters, fastL.data(), fastR.data(), samples);
                ProcessSectionCascadePlain(left.plain.data(), filters, plainL.data(), samples);
                ProcessSectionCascadePlain(right.plain.data(), filters, plainR.data(), samples);
                ASSERT_TRUE(SameBits(fastL.data(), plainL.data(), samples));
                ASSERT_TRUE(SameBits(fastR.data(), plainR.data(), samples));
                ASSERT_TRUE(left.StatesAgree());
                ASSERT_TRUE(right.StatesAgree());
            }
        }
    }
}

TEST_P(SectionCascade, CarriesNonFiniteSamplesLikeThePlainKernel) {
    Twins twins(6, 5);
    std::vector<float> fast = RandomBlock(40, 3);
    fast[9] = std::numeric_limits<float>::infinity();
    fast[20] = std::numeric_limits<float>::quiet_NaN();
    fast[30] = 1e30f;
    std::vector<float> plain = fast;
    ProcessSectionCascadeOn(GetParam(), twins.fast.data(), 6, fast.data(), 40);
    ProcessSectionCascadePlain(twins.plain.data(), 6, plain.data(), 40);
    EXPECT_TRUE(SameBits(fast.data(), plain.data(), 40));
}

}  // namespace
}  // namespace vorix::test
