#include "platform/linux/identity/LinuxDeviceIdentity.h"

#include "support/TestHome.h"

#include <gtest/gtest.h>

using namespace quillbay::platform;
using quillbay::testing::TestHome;

// The expected text is what systemd-id128 gave with that machine id.
TEST(LinuxDeviceIdentityTest, IsTheApplicationsOwnHashOfTheMachineId)
{
    const QByteArray machineId("8f3b6d1c04e24a57b9d0c6e1f2a39b48");
    const QString expected = QStringLiteral("B5239F72-FF14-420E-B1FB-FE4AEC728A6A");
    EXPECT_EQ(deviceIdFromMachineId(machineId), expected);
    EXPECT_EQ(deviceIdFromMachineId(machineId.toUpper() + '\n'), expected);
}

TEST(LinuxDeviceIdentityTest, TakesNothingForAnIdThatIsNone)
{
    for (const char *text : {"", "uninitialized", "00000000000000000000000000000000",
                             "8f3b6d1c04e24a57b9d0c6e1f2a39b4", "8f3b6d1c04e24a57b9d0c6e1f2a39b48a",
                             "8f3b6d1c04e24a57b9d0c6e1f2a39b4g", "8f3b6d1c-04e2-4a57-b9d0-c6e1f2a39b48"})
        EXPECT_EQ(deviceIdFromMachineId(text), std::nullopt) << text;
}

TEST(LinuxDeviceIdentityTest, ReadsTheMachinesFiles)
{
    const TestHome home;
    const LinuxDeviceIdentity identity(home.path(QStringLiteral("root")));
    EXPECT_EQ(identity.applicationDeviceId(), std::nullopt);
    EXPECT_EQ(identity.model(), QString());

    home.write(QStringLiteral("root/etc/machine-id"), "8f3b6d1c04e24a57b9d0c6e1f2a39b48\n");
    EXPECT_EQ(identity.applicationDeviceId(), QStringLiteral("B5239F72-FF14-420E-B1FB-FE4AEC728A6A"));

    home.write(QStringLiteral("root/proc/device-tree/model"), QByteArray("Berry Model 4", 14));
    EXPECT_EQ(identity.model(), QStringLiteral("Berry Model 4"));
    home.write(QStringLiteral("root/sys/class/dmi/id/product_name"), "Book 14\n");
    EXPECT_EQ(identity.model(), QStringLiteral("Book 14"));
    home.write(QStringLiteral("root/sys/class/dmi/id/sys_vendor"), "Acme\n");
    EXPECT_EQ(identity.model(), QStringLiteral("Acme Book 14"));
    home.write(QStringLiteral("root/sys/class/dmi/id/sys_vendor"), "Book\n");
    EXPECT_EQ(identity.model(), QStringLiteral("Book 14"));
}
