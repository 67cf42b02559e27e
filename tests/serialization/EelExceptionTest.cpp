#include "serialization/EelException.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "serialization/XMLArchive.h"

namespace vorix::Eel {
namespace {

TEST(EelException, TextIsTheWordsThenTheFailedExpressionAndItsPlace) {
    const Exception failure("it broke", "a < b", "/home/build/src/serialization/Thing.cpp", 42);
    EXPECT_STREQ(failure.what(), "it broke\nExpression 'a < b' failed in Thing.cpp:42");
    EXPECT_EQ(failure.Words(), "it broke");
}

TEST(EelException, IsCaughtAsAStandardRuntimeError) {
    EXPECT_THROW(throw Exception("w", "c", "f.cpp", 1), std::runtime_error);
}

TEST(EelException, CheckRaisesWithTheConditionTextOnlyWhenItFails) {
    int wordsBuilt = 0;
    const auto words = [&wordsBuilt] {
        ++wordsBuilt;
        return std::string("limit passed");
    };
    const int limit = 3;
    EXPECT_NO_THROW(VORIX_EEL_CHECK(limit > 2, Exception, words()));
    EXPECT_EQ(wordsBuilt, 0);
    try {
        VORIX_EEL_CHECK(limit > 5, Exception, words());
        FAIL() << "no exception";
    } catch (const Exception& e) {
        EXPECT_EQ(e.Words(), "limit passed");
        EXPECT_EQ(std::string(e.what()).rfind("limit passed\nExpression 'limit > 5' failed in "
                                              "EelExceptionTest.cpp:",
                                              0),
                  0u);
    }
    EXPECT_EQ(wordsBuilt, 1);
}

TEST(EelException, ParseExceptionIsAnEelException) {
    EXPECT_THROW(throw Serialization::XMLArchive::ParseException("w", "c", "f.cpp", 1), Exception);
}

}  // namespace
}  // namespace vorix::Eel
