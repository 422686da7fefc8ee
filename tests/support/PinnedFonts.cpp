#include "backends/cairo/CairoText.hpp"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

// Before the first text is set: the library reads its configuration once.
class PinnedFonts : public testing::Environment {
 public:
    void SetUp() override {
        std::filesystem::create_directories(TARNWICK_GOLDEN_OUTPUT_DIR);  // The cache lies in it.
        ::setenv("FONTCONFIG_FILE", TARNWICK_FONTS_CONF, 1);
        ::setenv("XDG_CACHE_HOME", TARNWICK_GOLDEN_OUTPUT_DIR, 1);
        ::setenv("LC_ALL", "C.UTF-8", 1);
        std::setlocale(LC_ALL, "C.UTF-8");
        painting::CairoText::shared().setSansFamily("DejaVu Sans");
        expectTheOneFont();
    }

 private:
    static void expectTheOneFont() {
        FcPattern* wanted = FcNameParse(reinterpret_cast<const FcChar8*>("DejaVu Sans"));
        FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
        FcDefaultSubstitute(wanted);
        FcResult result;
        FcPattern* found = FcFontMatch(nullptr, wanted, &result);
        FcChar8* family = nullptr;
        if (found) FcPatternGetString(found, FC_FAMILY, 0, &family);
        EXPECT_STREQ(reinterpret_cast<const char*>(family), "DejaVu Sans")
            << "the package fonts-dejavu-core is needed";
        FcPatternDestroy(wanted);
        if (found) FcPatternDestroy(found);
    }
};

[[maybe_unused]] const testing::Environment* const pinnedFonts =
    testing::AddGlobalTestEnvironment(std::make_unique<PinnedFonts>().release());

}  // namespace
