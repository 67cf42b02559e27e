#include "engine/ExternalFilter.h"

#include <array>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"

namespace vorix {
namespace {

using Rows = std::vector<std::array<float, 3>>;

// Three sections as a document may give them: the last two with a0 other than 1.
const Rows kNumerators = {{0.2f, 0.4f, 0.2f}, {1.0f, -1.2f, 0.5f}, {0.5f, 0.1f, -0.3f}};
const Rows kDenominators = {{1.0f, -0.6f, 0.25f}, {2.0f, -1.1f, 0.4f}, {0.5f, -0.5f, 0.2f}};

void Load(OpaqueFilterData* e, const Rows& numerators, const Rows& denominators) {
    FilterDescription description;
    description.numerators = numerators;
    description.denominators = denominators;
    LoadExternalSections(e, description);
}

// One section over a whole signal, straight from the difference equation in double precision;
// a0 plays no part in it.
class ReferenceSection {
  public:
    ReferenceSection(const std::array<float, 3>& b, const std::array<float, 3>& a) : b_(b), a_(a) {}

    void Run(const std::vector<float>& input, std::vector<float>& output) {
        for (size_t i = 0; i < input.size(); ++i) {
            const double x = input[i];
            const double y = b_[0] * x + b_[1] * x1_ + b_[2] * x2_ - a_[1] * y1_ - a_[2] * y2_;
            x2_ = x1_;
            x1_ = x;
            y2_ = y1_;
            y1_ = y;
            output[i] = static_cast<float>(y);
        }
    }

  private:
    std::array<float, 3> b_, a_;
    double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

void ExpectSections(const ExternalFilterData* e, const Rows& numerators, const Rows& denominators) {
    ASSERT_EQ(e->sections.size(), numerators.size());
    for (size_t i = 0; i < numerators.size(); ++i) {
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(e->sections[i].b[k], numerators[i][k]) << i << " " << k;
            EXPECT_EQ(e->sections[i].a[k], denominators[i][k]) << i << " " << k;
        }
    }
}

bool SameBits(const std::vector<float>& x, const std::vector<float>& y) {
    return x.size() == y.size() && std::memcmp(x.data(), y.data(), x.size() * sizeof(float)) == 0;
}

TEST(ExternalFilterTest, LoadingResizesKeepsCoefficientsAsGivenAndAddsSilentSections) {
    test::PoolWithChain pc;
    ExternalFilterData* e = pc.AddExternal();
    Load(e, kNumerators, kDenominators);
    ExpectSections(e, kNumerators, kDenominators);
    Load(e, {kNumerators[1]}, {kDenominators[1]});
    ExpectSections(e, {kNumerators[1]}, {kDenominators[1]});

    std::vector<float> buffer = test::Noise(32, 1);
    ProcessSectionsBlock(e, buffer.data(), buffer.data(), 32);
    Load(e, {kNumerators[1], kNumerators[0]}, {kDenominators[1], kDenominators[0]});
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(e->sections[1].x[k], 0.0f);
        EXPECT_EQ(e->sections[1].y[k], 0.0);
    }
}

TEST(ExternalFilterTest, InPlaceProcessingIsTheDirectCascadeIgnoringA0AcrossBlocks) {
    test::PoolWithChain pc;
    ExternalFilterData* e = pc.AddExternal();
    Load(e, kNumerators, kDenominators);
    const std::vector<float> input = test::Noise(400, 7);

    std::vector<float> expected = input;
    for (size_t i = 0; i < kNumerators.size(); ++i) {
        ReferenceSection(kNumerators[i], kDenominators[i]).Run(expected, expected);
    }
    std::vector<float> output = input;
    int done = 0;
    for (int block : {1, 17, 0, 64, 318}) {
        ProcessSectionsBlock(e, output.data() + done, output.data() + done, block);
        done += block;
    }
    ASSERT_EQ(done, 400);
    EXPECT_TRUE(SameBits(output, expected));
}

TEST(ExternalFilterTest, SeparateBuffersLeaveOnlyTheLastSectionsResultOnTheInput) {
    test::PoolWithChain pc;
    ExternalFilterData* e = pc.AddExternal();
    Load(e, kNumerators, kDenominators);
    ReferenceSection last(kNumerators[2], kDenominators[2]);
    for (uint32_t seed : {3u, 4u}) {  // two blocks: each section keeps its own history
        const std::vector<float> input = test::Noise(128, seed);
        std::vector<float> expected(128);
        last.Run(input, expected);
        std::vector<float> output(128, 0.0f);
        ProcessSectionsBlock(e, input.data(), output.data(), 128);
        EXPECT_TRUE(SameBits(output, expected)) << "block " << seed;
        EXPECT_TRUE(SameBits(input, test::Noise(128, seed)));
    }
}

TEST(ExternalFilterTest, CopyingTakesEverySectionWhateverTheTargetHeld) {
    test::PoolWithChain pc;
    ExternalFilterData* source = pc.AddExternal();
    ExternalFilterData* longer = pc.AddExternal();
    ExternalFilterData* sameSize = pc.AddExternal();
    Load(source, kNumerators, kDenominators);
    Load(longer, Rows(4, kNumerators[0]), Rows(4, kDenominators[0]));
    Load(sameSize, {kNumerators[2], kNumerators[1], kNumerators[0]},
         {kDenominators[2], kDenominators[1], kDenominators[0]});
    source->name = "Telephone";
    CopyExternalSections(source, longer);
    CopyFilterParameters(source, sameSize);  // between two External filters: sections and name
    ExpectSections(longer, kNumerators, kDenominators);
    ExpectSections(sameSize, kNumerators, kDenominators);
    EXPECT_EQ(sameSize->name, "Telephone");
}

}  // namespace
}  // namespace vorix
