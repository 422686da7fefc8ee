#include "tests/locale/CommaLocale.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

namespace {

TEST(PropertyListLocale, ReadsAndWritesADecimalPointWhereTheUserHasAComma) {
    const CommaLocale locale;
    if (!locale.isActive()) GTEST_SKIP() << "no locale with a decimal comma on this system";
    EXPECT_EQ(*decodedBody("<real>0.5</real>"), PropertyValue(0.5));
    EXPECT_NE(PlistCodec().encode(PropertyValue(0.5))->find("<real>0.5</real>"), std::string::npos);
}

TEST(PropertyListLocale, GivesTheCallerItsLocaleBack) {
    const CommaLocale locale;
    if (!locale.isActive()) GTEST_SKIP() << "no locale with a decimal comma on this system";
    (void)decodedBody("<real>0.5</real>");
    (void)PlistCodec().encode(PropertyValue(0.5));
    EXPECT_TRUE(locale.isActive());
}

}  // namespace
