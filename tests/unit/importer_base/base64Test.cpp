#include "importers/maya/src/base64.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Vector {
    const char* bytes;
    const char* text;
};

// RFC 4648, section 10
constexpr Vector kVectors[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
};

TEST(Base64, AgreesWithThePublishedVectorsBothWays)
{
    for (const Vector& vector : kVectors) {
        EXPECT_EQ(base64_encode(vector.bytes), vector.text);
        EXPECT_EQ(base64_decode(vector.text), vector.bytes);
    }
}

// ff = 111111 11(0000): '/', 'w'; fb ff = 111110 111111 1111(00): '+', '/', '8'
TEST(Base64, TakesBytesWithTheHighBitAndTheTwoSigns)
{
    EXPECT_EQ(base64_encode("\xff"), "/w==");
    EXPECT_EQ(base64_encode("\xfb\xff"), "+/8=");
    EXPECT_EQ(base64_decode("+/8="), "\xfb\xff");
}

TEST(Base64, KeepsZeroBytes)
{
    const std::string bytes("\0a\0", 3); // 000000 000110 000100 000000
    EXPECT_EQ(base64_encode(bytes), "AGEA");
    EXPECT_EQ(base64_decode("AGEA"), bytes);
}

TEST(Base64, StopsSilentlyAtTheFirstForeignCharacter)
{
    for (const char* foreign : {"=", " ", "\n", "\r", "-", "_", ".", "\"", "\xe9"}) {
        EXPECT_EQ(base64_decode("Zm9v" + std::string(foreign) + "YmFy"), "foo") << foreign;
    }
}

TEST(Base64, StopsAtAZero)
{
    EXPECT_EQ(base64_decode(std::string("Zm9v\0YmFy", 9)), "foo");
}

TEST(Base64, DecodesAnUnpaddedEnd)
{
    EXPECT_EQ(base64_decode("Zm9vYmE"), "fooba");
    EXPECT_EQ(base64_decode("Zm9vYg"), "foob");
}

TEST(Base64, DropsASingleLeftOverCharacter)
{
    EXPECT_EQ(base64_decode("Zm9vY"), "foo");
    EXPECT_EQ(base64_decode("Z"), "");
}

} // namespace
