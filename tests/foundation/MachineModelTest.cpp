#include "platform/foundation/MachineModel.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace {

class MachineModel : public testing::Test {
 protected:
    void setMachineInfo(const std::string& text) const { root.write("etc/machine-info", text); }
    void setDmi(const std::string& type) const {
        root.write("sys/class/dmi/id/chassis_type", type + "\n");
    }
    void setProduct(const std::string& name) const {
        root.write("sys/class/dmi/id/product_name", name + "\n");
    }
    void setTreeChassis(const std::string& name) const {
        root.write("proc/device-tree/chassis-type", name + '\0');
    }
    void setTreeModel(const std::string& name) const {
        root.write("proc/device-tree/model", name + '\0');
    }
    std::string model() const { return machineModelBelow(root.path()); }

    TemporaryFolder root;
};

TEST_F(MachineModel, IsEmptyWhenNothingCanBeTold) {
    EXPECT_EQ(model(), "");
    EXPECT_EQ(machineModelBelow(root / "missing"), "");
}

TEST_F(MachineModel, FollowsTheHostNameServicesChassis) {
    const auto of = [&](const std::string& chassis) {
        setMachineInfo("CHASSIS=" + chassis + "\n");
        return model();
    };
    EXPECT_EQ(of("handset"), "iPhone");
    EXPECT_EQ(of("watch"), "iPod");
    for (const char* chassis :
         {"desktop", "laptop", "convertible", "server", "tablet", "embedded", "vm", "container"}) {
        EXPECT_EQ(of(chassis), "iPad") << chassis;
    }
    EXPECT_EQ(of("teapot"), "");
    EXPECT_EQ(of("Handset"), "");
    EXPECT_EQ(of(""), "");
}

TEST_F(MachineModel, ReadsMachineInfoAsItsFormatSays) {
    setMachineInfo("# CHASSIS=laptop\nPRETTY_HOSTNAME=x\nCHASSIS=\"handset\"\n");
    EXPECT_EQ(model(), "iPhone");
    setMachineInfo("CHASSIS='handset'");
    EXPECT_EQ(model(), "iPhone");
    setMachineInfo("  CHASSIS=handset \r\n");
    EXPECT_EQ(model(), "iPhone");
    setMachineInfo("CHASSIS=tablet\nCHASSIS=handset\n");
    EXPECT_EQ(model(), "iPhone");
    setMachineInfo("MYCHASSIS=handset\nCHASSIS_X=handset\n");
    EXPECT_EQ(model(), "");
    setMachineInfo("CHASSIS=\"handset\n\"\n\n=\nCHASSIS");
    EXPECT_EQ(model(), "");
}

TEST_F(MachineModel, KnowsAPortablePlayerByItsIcon) {
    setMachineInfo("CHASSIS=handset\nICON_NAME=multimedia-player\n");
    EXPECT_EQ(model(), "iPod");
    setMachineInfo("CHASSIS=tablet\nICON_NAME=multimedia-player\n");
    EXPECT_EQ(model(), "iPad");
    setMachineInfo("CHASSIS=handset\nICON_NAME=phone\n");
    EXPECT_EQ(model(), "iPhone");
}

TEST_F(MachineModel, FollowsTheDmiTable) {
    const auto of = [&](const std::string& type) {
        setDmi(type);
        return model();
    };
    EXPECT_EQ(of("11"), "iPhone");
    for (const char* type : {"3", "9", "10", "12", "13", "23", "30", "31", "32", "36"}) {
        EXPECT_EQ(of(type), "iPad") << type;
    }
    // It is there and tells nothing usable, so this is a machine of the PC kind all the same.
    for (const char* type : {"1", "2", "37", "-11", "11x", "99999999999999999999"}) {
        EXPECT_EQ(of(type), "iPad") << type;
    }
    EXPECT_EQ(of(""), "");
}

TEST_F(MachineModel, FollowsTheDeviceTree) {
    setTreeChassis("handset");
    EXPECT_EQ(model(), "iPhone");
    setTreeChassis("tablet");
    EXPECT_EQ(model(), "iPad");
    setTreeChassis("television");
    EXPECT_EQ(model(), "iPad");
}

TEST_F(MachineModel, AsksTheSourcesInTheirOrder) {
    setTreeChassis("tablet");
    setDmi("11");
    EXPECT_EQ(model(), "iPhone") << "the DMI table before the device tree";
    setMachineInfo("CHASSIS=laptop");
    EXPECT_EQ(model(), "iPad") << "the host-name service before the DMI table";
    setMachineInfo("CHASSIS=teapot");
    EXPECT_EQ(model(), "iPhone") << "the next one when the first tells nothing known";
    setTreeChassis("handset");
    setDmi("2");
    EXPECT_EQ(model(), "iPhone") << "the device tree when the DMI table does not know";
}

TEST_F(MachineModel, CarriesTheMachinesOwnModel) {
    setMachineInfo("CHASSIS=laptop");
    setProduct("ThinkPad X13");
    EXPECT_EQ(model(), "iPad,ThinkPad X13");
    setMachineInfo("CHASSIS=handset");
    EXPECT_EQ(model(), "iPhone,ThinkPad X13");
}

TEST_F(MachineModel, TakesTheModelOfTheDeviceTreeWhereThereIsNoDmiTable) {
    setTreeModel("Purism Librem 5");
    setTreeChassis("handset");
    EXPECT_EQ(model(), "iPhone,Purism Librem 5");
    setProduct("  ");
    EXPECT_EQ(model(), "iPhone,Purism Librem 5");
}

TEST_F(MachineModel, CountsAMachineOfUnknownChassisAsALargerOne) {
    setTreeModel("Some Board");
    EXPECT_EQ(model(), "iPad,Some Board");
}

TEST_F(MachineModel, KeepsControlCharactersOut) {
    setProduct(std::string("\tX\x01\n13\x7F\0 ", 9));
    EXPECT_EQ(model(), "iPad,X13");
}

TEST_F(MachineModel, TakesFilesThatAreFarTooLargeAsMissing) {
    setMachineInfo("CHASSIS=handset\n" + std::string(1000000, '#'));
    EXPECT_EQ(model(), "");
}

TEST_F(MachineModel, DoesNotWaitForAPipe) {
    root.write("etc/other", "");
    ASSERT_EQ(mkfifo((root / "etc/machine-info").c_str(), 0600), 0);
    setTreeChassis("handset");
    EXPECT_EQ(model(), "iPhone");
}

TEST(ChosenMachineModel, GoesBeforeTheMachinesOwnUntilItIsUndone) {
    const std::string own = machineModel();
    setMachineModel("iPod5,1");
    EXPECT_EQ(machineModel(), "iPod5,1");
    setMachineModel("");
    EXPECT_EQ(machineModel(), own);
}

}  // namespace
