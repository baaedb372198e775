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

  std::string entry_text(const mrib_attrib_entry_pod& attr) {
    char buf[128];
    int written = ostrel_fmt_entry_flags(buf, sizeof buf, &attr);
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

// With every word set, the texts show the output order and which rows need -D.
TEST_F(RouteFlagsTest, FullSetsInOutputOrderWithDetailRowsOnlyUnderDetail) {
  const auto entry = all_set<mrib_attrib_entry_pod>();
  const auto intf = all_set<mrib_attrib_intrf_pod>();
  EXPECT_EQ("L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX MDT_IFH P MoFE MoFS AT X ICD",
            entry_text(entry));
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            intf_text(intf));

  ostrel_platform_detail = 1;
  EXPECT_EQ(
      "L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX EID RPFID MDT_IFH P MoFE MoFS MoFP "
      "MoFB AT "
      "X ICD",
      entry_text(entry));
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC EG MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            intf_text(intf));
}

// Sets whose words lie apart in the record, or that only -D shows, print their own words and no others.
TEST_F(RouteFlagsTest, PartialSetsPrintTheirOwnWords) {
  mrib_attrib_entry_pod entry{};
  entry.IsPlatformModified = entry.VXLAN = entry.InitialConvergenceDone = entry.IsMDTAddressOn = 1;
  EXPECT_EQ("PM MA X ICD", entry_text(entry));
  entry = {};
  entry.EncapsulationIdentifierFlag = entry.IsMDTInterfaceSpecialOn = entry.CandidateMOFRR = 1;
  entry.MOFRRPrimary = entry.MOFRRBackup = entry.RPFIdentifierFlag = 1;
  EXPECT_EQ("MDT_IFH MoFE", entry_text(entry));
  mrib_attrib_intrf_pod intf{};
  intf.IsForward = intf.IsEncapsulationInterface = intf.IsUnderlyingPhysicalChange = intf.IsEgressInterface =
      1;
  intf.IsP2MPInterface = intf.IsExtranet = 1;
  EXPECT_EQ("F EI PC LVIF EX", intf_text(intf));
  ostrel_platform_detail = 1;
  EXPECT_EQ("EID RPFID MDT_IFH MoFE MoFP MoFB", entry_text(entry));
  EXPECT_EQ("F EI PC EG LVIF EX", intf_text(intf));
}

TEST_F(RouteFlagsTest, ForwardMplsIsNeverPrintedAndMplsMeansViaLsm) {
  mrib_attrib_entry_pod attr{};
  attr.IsForwardMPLS = 1;
  EXPECT_EQ("", entry_text(attr));
  attr.IsViaLSM = 1;
  EXPECT_EQ("MPLS", entry_text(attr));
}

TEST_F(RouteFlagsTest, ShortBuffersCutTheTextWithinTheirSizeAndNoRoomLeavesThemAlone) {
  const auto all = all_set<mrib_attrib_entry_pod>();
  char buf[8];
  std::memset(buf, '#', sizeof buf);
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, 0, &all));
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, -5, &all));
  EXPECT_EQ(0, std::memcmp(buf, "########", sizeof buf));

  mrib_attrib_entry_pod entry{};
  entry.IsDirectlyConnectedCheckSet = entry.IsRPFNeighborPresent = entry.IsMDTAddressOn = 1;
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

TEST_F(RouteFlagsTest, EntryPredicateLeavesOutForwardMplsAndConvergenceAndDetailWordsWithoutDetail) {
  mrib_attrib_entry_pod attr{};
  EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
  attr.IsForwardMPLS = attr.InitialConvergenceDone = 1;
  ostrel_platform_detail = 1;
  EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
  EXPECT_EQ("ICD", entry_text(attr));

  for (uint32_t mrib_attrib_entry_pod::*field :
       {&mrib_attrib_entry_pod::EncapsulationIdentifierFlag, &mrib_attrib_entry_pod::RPFIdentifierFlag,
        &mrib_attrib_entry_pod::MOFRRPrimary, &mrib_attrib_entry_pod::MOFRRBackup}) {
    attr = {};
    attr.*field = 1;
    ostrel_platform_detail = 0;
    EXPECT_EQ(0u, ostrel_entry_flags_any(&attr));
    ostrel_platform_detail = 1;
    EXPECT_EQ(1u, ostrel_entry_flags_any(&attr));
  }
  ostrel_platform_detail = 0;
  for (uint32_t mrib_attrib_entry_pod::*field :
       {&mrib_attrib_entry_pod::IsMDTInterfaceSpecialOn, &mrib_attrib_entry_pod::VXLAN}) {
    attr = {};
    attr.*field = 1;
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
  ostrel_platform_detail = 0;
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
