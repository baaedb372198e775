// The attribute mnemonics: output order where it departs from the record's field order, the rows that only
// -D shows, the words the predicates leave out, full sets and cut texts.
#include "views/route/route_flags.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "access/switches.h"

namespace {

class RouteFlagsTest : public ::testing::Test {
 protected:
  void SetUp() override { ostrel_platform_detail = 0; }
  void TearDown() override { ostrel_platform_detail = 0; }

  std::string entry_text(const mrib_attrib_entry_pod& attr, int* length = nullptr) {
    char buf[128];
    int written = ostrel_fmt_entry_flags(buf, sizeof buf, &attr);
    if (length != nullptr) *length = written;
    EXPECT_EQ(static_cast<size_t>(written), std::strlen(buf));
    return buf;
  }

  std::string intf_text(const mrib_attrib_intrf_pod& attr) {
    char buf[128];
    int written = ostrel_fmt_intf_flags(buf, sizeof buf, &attr);
    EXPECT_EQ(static_cast<size_t>(written), std::strlen(buf));
    return buf;
  }

  // Every attribute set: both sets are nothing but 32-bit words.
  template <typename Attr>
  static Attr all_set() {
    Attr attr;
    uint32_t words[sizeof(Attr) / sizeof(uint32_t)];
    static_assert(sizeof words == sizeof attr);
    for (uint32_t& word : words) word = 1;
    std::memcpy(&attr, words, sizeof attr);
    return attr;
  }
};

TEST_F(RouteFlagsTest, EntryMnemonicsFollowOutputOrderNotFieldOrder) {
  mrib_attrib_entry_pod attr{};
  attr.IsDirectlyConnectedCheckSet = attr.IsRPFNeighborPresent = attr.IsMDTAddressOn = 1;
  int length = -1;
  EXPECT_EQ("C RPF MA", entry_text(attr, &length));
  EXPECT_EQ(8, length);

  attr = {};
  attr.IsPlatformModified = attr.IsMDTAddressOn = 1;
  EXPECT_EQ("PM MA", entry_text(attr));

  attr = {};
  attr.VXLAN = attr.InitialConvergenceDone = 1;
  EXPECT_EQ("X ICD", entry_text(attr));
}

TEST_F(RouteFlagsTest, EntryDetailRowsNeedTheDetailSwitch) {
  mrib_attrib_entry_pod attr{};
  attr.EncapsulationIdentifierFlag = attr.IsMDTInterfaceSpecialOn = 1;
  attr.MOFRRPrimary = attr.MOFRRBackup = attr.RPFIdentifierFlag = 1;
  attr.CandidateMOFRR = 1;
  EXPECT_EQ("MDT_IFH MoFE", entry_text(attr));
  ostrel_platform_detail = 1;
  EXPECT_EQ("EID RPFID MDT_IFH MoFE MoFP MoFB", entry_text(attr));
}

TEST_F(RouteFlagsTest, ForwardMplsIsNeverPrintedAndMplsMeansViaLsm) {
  mrib_attrib_entry_pod attr{};
  attr.IsForwardMPLS = 1;
  EXPECT_EQ("", entry_text(attr));
  attr.IsViaLSM = 1;
  EXPECT_EQ("MPLS", entry_text(attr));
}

TEST_F(RouteFlagsTest, InterfaceMnemonicsFollowOutputOrder) {
  mrib_attrib_intrf_pod attr{};
  attr.IsForward = attr.IsEncapsulationInterface = attr.IsUnderlyingPhysicalChange = 1;
  EXPECT_EQ("F EI PC", intf_text(attr));

  attr = {};
  attr.IsP2MPInterface = attr.IsExtranet = 1;
  EXPECT_EQ("LVIF EX", intf_text(attr));

  attr = {};
  attr.IsEgressInterface = attr.IsAccept = 1;
  EXPECT_EQ("A", intf_text(attr));
  ostrel_platform_detail = 1;
  EXPECT_EQ("A EG", intf_text(attr));
}

TEST_F(RouteFlagsTest, FullSetsFitTheSmallestCallerBuffer) {
  const auto entry = all_set<mrib_attrib_entry_pod>();
  const auto intf = all_set<mrib_attrib_intrf_pod>();
  int length = -1;
  EXPECT_EQ("L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX MDT_IFH P MoFE MoFS AT X ICD",
            entry_text(entry, &length));
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            intf_text(intf));

  ostrel_platform_detail = 1;
  EXPECT_EQ(
      "L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX EID RPFID MDT_IFH P MoFE MoFS MoFP "
      "MoFB AT "
      "X ICD",
      entry_text(entry, &length));
  EXPECT_EQ(113, length);
  std::string intf_full = intf_text(intf);
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC EG MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            intf_full);
  EXPECT_EQ(86u, intf_full.size());
}

TEST_F(RouteFlagsTest, EntryFormatterWithoutRoomLeavesTheBufferAlone) {
  const auto attr = all_set<mrib_attrib_entry_pod>();
  char buf[4] = {'x', 'y', 'z', 'w'};
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, 0, &attr));
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, -5, &attr));
  EXPECT_EQ(0, std::memcmp(buf, "xyzw", 4));
}

TEST_F(RouteFlagsTest, ShortBuffersCutTheTextWithinTheirSize) {
  mrib_attrib_entry_pod entry{};
  entry.IsDirectlyConnectedCheckSet = entry.IsRPFNeighborPresent = entry.IsMDTAddressOn = 1;
  char buf[8];
  std::memset(buf, '#', sizeof buf);
  EXPECT_EQ(3, ostrel_fmt_entry_flags(buf, 4, &entry));
  EXPECT_STREQ("C R", buf);
  EXPECT_EQ('#', buf[4]);

  mrib_attrib_intrf_pod intf{};
  intf.IsForward = intf.IsAccept = 1;
  std::memset(buf, '#', sizeof buf);
  EXPECT_EQ(0, ostrel_fmt_intf_flags(buf, 1, &intf));
  EXPECT_EQ('\0', buf[0]);
  EXPECT_EQ('#', buf[1]);
}

TEST_F(RouteFlagsTest, EntryPredicateLeavesOutForwardMplsAndConvergence) {
  mrib_attrib_entry_pod attr{};
  EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
  attr.IsForwardMPLS = attr.InitialConvergenceDone = 1;
  ostrel_platform_detail = 1;
  EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
  EXPECT_EQ("ICD", entry_text(attr));
  ostrel_platform_detail = 0;

  attr = {};
  attr.IsMDTInterfaceSpecialOn = 1;
  EXPECT_EQ(1u, ostrel_entry_flags_any(&attr));
  attr = {};
  attr.VXLAN = 1;
  EXPECT_EQ(1u, ostrel_entry_flags_any(&attr));
}

TEST_F(RouteFlagsTest, EntryPredicateCountsDetailWordsOnlyUnderDetail) {
  for (uint32_t mrib_attrib_entry_pod::*field :
       {&mrib_attrib_entry_pod::EncapsulationIdentifierFlag, &mrib_attrib_entry_pod::RPFIdentifierFlag,
        &mrib_attrib_entry_pod::MOFRRPrimary, &mrib_attrib_entry_pod::MOFRRBackup}) {
    mrib_attrib_entry_pod attr{};
    attr.*field = 1;
    ostrel_platform_detail = 0;
    EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
    ostrel_platform_detail = 1;
    EXPECT_EQ(1u, ostrel_entry_flags_any(&attr));
  }
}

TEST_F(RouteFlagsTest, InterfacePredicateCountsMdtDataAndEgressOnlyUnderDetail) {
  for (uint32_t mrib_attrib_intrf_pod::*field :
       {&mrib_attrib_intrf_pod::IsEgressInterface, &mrib_attrib_intrf_pod::IsMDTDataTriggered,
        &mrib_attrib_intrf_pod::IsMDTDataUsed}) {
    mrib_attrib_intrf_pod attr{};
    attr.*field = 1;
    ostrel_platform_detail = 0;
    EXPECT_EQ(0u, ostrel_intf_flags_any(&attr));
    ostrel_platform_detail = 1;
    EXPECT_EQ(1u, ostrel_intf_flags_any(&attr));
  }
  mrib_attrib_intrf_pod attr{};
  attr.EVPN_MH_Interface = 1;
  EXPECT_EQ(1u, ostrel_intf_flags_any(&attr));
  // Without -D "MT" is printed although the set does not count.
  attr = {};
  attr.IsMDTDataTriggered = 1;
  EXPECT_EQ("MT", intf_text(attr));
}

TEST_F(RouteFlagsTest, NullArgumentsAreProgrammingErrors) {
  const mrib_attrib_entry_pod entry{};
  const mrib_attrib_intrf_pod intf{};
  char buf[16];
  EXPECT_DEATH(ostrel_fmt_entry_flags(nullptr, 16, &entry), "buf != NULL");
  EXPECT_DEATH(ostrel_fmt_entry_flags(buf, 16, nullptr), "attr != NULL");
  EXPECT_DEATH(ostrel_fmt_intf_flags(nullptr, 16, &intf), "buf != NULL");
  EXPECT_DEATH(ostrel_fmt_intf_flags(buf, 16, nullptr), "attr != NULL");
}

}  // namespace
