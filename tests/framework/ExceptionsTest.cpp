#include "framework/Exceptions.h"

#include <gtest/gtest.h>

#include <cstring>

#include "framework/FourCC.h"

namespace vorix {
namespace {

TEST(Exceptions, ConstructionRecordsThePlaceOfTheThrow) {
    int line = 0;
    try {
        line = __LINE__ + 1;
        VORIX_THROW(AppFrame::TimeOut);
    } catch (const AppFrame::Exception&) {
    }
    EXPECT_EQ(AppFrame::LastExceptionLine(), line);
    ASSERT_NE(AppFrame::LastExceptionFile(), nullptr);
    EXPECT_NE(std::strstr(AppFrame::LastExceptionFile(), "ExceptionsTest.cpp"), nullptr);
}

TEST(FourCC, FirstCharacterIsTheHighByte) {
    EXPECT_EQ(FourCC("flrA"), 0x666c7241u);
    EXPECT_EQ(FourCC("cfg "), 0x63666720u);
    EXPECT_EQ(FourCC("\xff\x01\x02\x03"), 0xff010203u);
}

}  // namespace
}  // namespace vorix
