#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/NSBundle.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace {

std::string infoPlist(const std::string& entries) {
    return "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

std::string stringEntry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

class Bundle : public testing::Test {
 protected:
    Bundle() { NSPropertyList::setCodec(std::make_shared<PlistCodec>()); }
    ~Bundle() override { NSPropertyList::setCodec(nullptr); }

    std::shared_ptr<NSBundle> bundleWithInfo(const std::string& info) const {
        folder.write("Info.plist", info);
        return NSBundle::bundleWithPath(folder.path());
    }

    TemporaryFolder folder;
};

TEST_F(Bundle, IsNullWithoutAFolder) {
    EXPECT_EQ(NSBundle::bundleWithPath(folder / "missing"), nullptr);
    EXPECT_EQ(NSBundle::bundleWithPath(folder.write("file", "")), nullptr);
    EXPECT_EQ(NSBundle::bundleWithPath(""), nullptr);
}

TEST_F(Bundle, ReadsItsInformation) {
    const auto bundle = bundleWithInfo(infoPlist(stringEntry("CFBundleIdentifier", "org.x")));
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(), folder.path());
    EXPECT_EQ(bundle->bundleIdentifier(), "org.x");
    EXPECT_EQ(bundle->infoDictionary().objectForKey("CFBundleIdentifier").string(), "org.x");
}

TEST_F(Bundle, HasNoInformationWithoutAReadableFile) {
    EXPECT_TRUE(NSBundle::bundleWithPath(folder.path())->infoDictionary().isNil());
    const TemporaryFolder other;
    other.write("Info.plist", "<plist><array/></plist>");
    const auto bundle = NSBundle::bundleWithPath(other.path());
    EXPECT_TRUE(bundle->infoDictionary().isNil());
    EXPECT_EQ(bundle->bundleIdentifier(), std::nullopt);
}

TEST_F(Bundle, IsTheSameForEveryPathToItsFolder) {
    const auto bundle = NSBundle::bundleWithPath(folder.path());
    std::filesystem::create_directory(folder / "sub");
    std::filesystem::create_symlink(folder.path(), folder / "sub/link");
    EXPECT_EQ(NSBundle::bundleWithPath(folder.path() + "/"), bundle);
    EXPECT_EQ(NSBundle::bundleWithPath(folder / "sub/.."), bundle);
    EXPECT_EQ(NSBundle::bundleWithPath(folder / "sub/link"), bundle);
    EXPECT_NE(NSBundle::bundleWithPath(folder / "sub"), bundle);
}

TEST_F(Bundle, FindsItsResources) {
    folder.write("thumb.png", "");
    folder.write("LICENSE", "");
    const auto bundle = NSBundle::bundleWithPath(folder.path());
    EXPECT_EQ(bundle->pathForResource("thumb", "png"), folder / "thumb.png");
    EXPECT_EQ(bundle->pathForResource("thumb.png", std::nullopt), folder / "thumb.png");
    EXPECT_EQ(bundle->pathForResource("LICENSE", ""), folder / "LICENSE");
    EXPECT_EQ(bundle->pathForResource("thumb", "gif"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("thumb", std::nullopt), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("THUMB", "png"), std::nullopt);
}

TEST_F(Bundle, HasNoResourceWithoutANameOrOutsideOfItself) {
    const TemporaryFolder outside;
    outside.write("secret.png", "");
    folder.write("sub/inner.png", "");
    folder.write(".png", "");
    const auto bundle = NSBundle::bundleWithPath(folder.path());
    EXPECT_EQ(bundle->pathForResource(std::nullopt, "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("", "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("sub/inner", "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("../" + outside.path().substr(5) + "/secret", "png"),
              std::nullopt);
    EXPECT_EQ(bundle->pathForResource(outside / "secret", "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("x", "/../sub/inner.png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("..", std::nullopt), std::nullopt);
    EXPECT_EQ(bundle->pathForResource(".", std::nullopt), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("sub", std::nullopt), std::nullopt) << "a folder";
    EXPECT_EQ(bundle->pathForResource(std::string("\0x", 2), "png"), std::nullopt);
}

TEST_F(Bundle, SaysWhyItCannotLoad) {
    const auto errorWith = [](const std::string& info) {
        const TemporaryFolder own;
        if (!info.empty()) own.write("Info.plist", info);
        own.write("NotAModule", "text");
        std::filesystem::create_directory(own / "Folder");
        mkfifo((own / "Pipe").c_str(), 0600);
        const auto bundle = NSBundle::bundleWithPath(own.path());
        EXPECT_FALSE(bundle->load()) << info;
        EXPECT_EQ(bundle->principalClass(), nullptr) << info;
        return bundle->loadError();
    };
    const auto errorForName = [&](const std::string& name) {
        return errorWith(infoPlist(stringEntry("CFBundleExecutable", name)));
    };
    EXPECT_EQ(errorWith(""), "Info.plist is missing or cannot be read");
    EXPECT_EQ(errorWith("nonsense"), "Info.plist is missing or cannot be read");
    EXPECT_EQ(errorWith(infoPlist("")), "Info.plist has no CFBundleExecutable");
    EXPECT_EQ(errorWith(infoPlist("<key>CFBundleExecutable</key><array/>")),
              "CFBundleExecutable in Info.plist is not a string");
    const std::string notAName =
        "CFBundleExecutable in Info.plist is not the name of a file in the bundle";
    for (const char* name : {"", ".", "..", "../x", "/etc/passwd", "a/b"}) {
        EXPECT_EQ(errorForName(name), notAName) << name;
    }
    EXPECT_TRUE(errorForName("Missing").starts_with("there is no file /"));
    EXPECT_TRUE(errorForName("Folder").starts_with("there is no file /"));
    EXPECT_TRUE(errorForName("Pipe").starts_with("there is no file /"));
    EXPECT_NE(errorForName("NotAModule").find("NotAModule"), std::string::npos);
}

// The fixture is a whole bundle whose module brings the class "Fixture".

TEST_F(Bundle, LoadsItsModuleAndFindsItsPrincipalClass) {
    const auto bundle = NSBundle::bundleWithPath(TARNWICK_FIXTURE_BUNDLE);
    ASSERT_NE(bundle, nullptr);
    const Class* cls = bundle->principalClass();
    ASSERT_NE(cls, nullptr) << bundle->loadError();
    EXPECT_EQ(cls->name, "Fixture");
    EXPECT_EQ(cls->create()->className(), "Fixture");
    EXPECT_EQ(bundle->loadError(), "");
    EXPECT_TRUE(bundle->load()) << "a second time";
    EXPECT_EQ(bundle->principalClass(), cls);
}

TEST_F(Bundle, IsFoundByAClassOfItsModule) {
    const auto bundle = NSBundle::bundleWithPath(TARNWICK_FIXTURE_BUNDLE);
    ASSERT_NE(bundle->principalClass(), nullptr) << bundle->loadError();
    EXPECT_EQ(NSBundle::bundleForClass(NSClassFromString("Fixture")), bundle);
}

TEST_F(Bundle, IsTheProgramsFolderForAClassOfTheProgram) {
    const Class cls{"Mine", nullptr, reinterpret_cast<const void*>(&infoPlist)};
    const auto bundle = NSBundle::bundleForClass(&cls);
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->bundlePath(),
              std::filesystem::canonical("/proc/self/exe").parent_path().string());
    EXPECT_TRUE(bundle->infoDictionary().isNil());
}

TEST_F(Bundle, IsNullForNoClassAndForOneOfNoModule) {
    const int local = 0;
    const Class onTheStack{"Odd", nullptr, &local};
    const Class nowhere{"Odd", nullptr, nullptr};
    EXPECT_EQ(NSBundle::bundleForClass(nullptr), nullptr);
    EXPECT_EQ(NSBundle::bundleForClass(&onTheStack), nullptr);
    EXPECT_EQ(NSBundle::bundleForClass(&nowhere), nullptr);
}

TEST_F(Bundle, SaysWhyItHasNoPrincipalClass) {
    const auto errorWith = [](const std::string& entries) {
        const TemporaryFolder own;
        std::filesystem::copy_file(std::string(TARNWICK_FIXTURE_BUNDLE) + "/FixtureModule",
                                   own / "FixtureModule");
        own.write("Info.plist",
                  infoPlist(stringEntry("CFBundleExecutable", "FixtureModule") + entries));
        const auto bundle = NSBundle::bundleWithPath(own.path());
        EXPECT_EQ(bundle->principalClass(), nullptr) << entries;
        return bundle->loadError();
    };
    EXPECT_EQ(errorWith(""), "Info.plist has no NSPrincipalClass");
    EXPECT_EQ(errorWith("<key>NSPrincipalClass</key><integer>1</integer>"),
              "NSPrincipalClass in Info.plist is not a string");
    EXPECT_EQ(errorWith(stringEntry("NSPrincipalClass", "Unknown")),
              "the class that NSPrincipalClass names is not in the module: Unknown");
}

}  // namespace
