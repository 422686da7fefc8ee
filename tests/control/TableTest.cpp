#include "shells/control/Output.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace control {
namespace {

const Row heading = {"A", "B", "C", "D", "E"};
const Row narrow = {"a", "b", "c", "d", "e"};
const Row wide = {"long", "b b", "c", "d", "e"};

TEST(TableForPrograms, SeparatesByTabsAndHasNoHeading) {
    Table table(Table::Style::TabSeparated);
    EXPECT_EQ(table.headingLine(heading), "");
    EXPECT_EQ(table.line(wide), "long\tb b\tc\td\te\n");
}

TEST(TableForEyes, AlignsTheColumnsUnderTheirHeading) {
    Table table(Table::Style::Aligned);
    const std::vector<Row> rows = {narrow, wide};
    table.makeRoomFor(rows);
    EXPECT_EQ(table.headingLine(heading), "A     B    C  D  E\n");
    EXPECT_EQ(table.line(narrow), "a     b    c  d  e\n");
    EXPECT_EQ(table.line(wide), "long  b b  c  d  e\n");
}

TEST(TableForEyes, MakesRoomForItsHeading) {
    Table table(Table::Style::Aligned);
    table.headingLine({"LONG", "B", "C", "D", "E"});
    EXPECT_EQ(table.line(narrow), "a     b  c  d  e\n");
}

TEST(TableForEyes, KeepsTheFieldsOfARowApartThatIsTooWide) {
    const Table table(Table::Style::Aligned);
    EXPECT_EQ(table.line(wide), "long  b b  c  d  e\n");
}

TEST(TableForEyes, CountsTheColumnsThatATerminalUses) {
    Table table(Table::Style::Aligned);
    const std::vector<Row> rows = {{"音楽", "", "", "", "."},       // Two columns each.
                                   {"e\xCC\x81", "", "", "", "."},  // The accent takes none.
                                   {"\xC3\xA9", "", "", "", "."}};
    table.makeRoomFor(rows);
    const std::string end = "      .\n";
    EXPECT_EQ(table.line(rows[0]), "音楽" + ("  " + end));
    EXPECT_EQ(table.line(rows[1]), "e\xCC\x81   " + ("  " + end));
    EXPECT_EQ(table.line(rows[2]), "\xC3\xA9   " + ("  " + end));
}

TEST(TableForPrograms, KeepsARowOneLineOfWhatCanBeShown) {
    const Table table(Table::Style::TabSeparated);
    EXPECT_EQ(table.line({"a\nb\tc", "\x1b[31md\x7f", "\xC2\x9B", "a\xC3(b", "\u202E"}),
              "a b c\t\uFFFD[31md\uFFFD\t\uFFFD\ta\uFFFD(b\t\uFFFD\n");
}

}  // namespace
}  // namespace control
