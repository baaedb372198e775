// The attribute mnemonics: output order where it departs from the record's field order, the rows that only
// -D shows, the words the predicates leave out, full sets and cut texts.
#include "views/route/route_flags.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string>
#include <type_traits>

#include "access/switches.h"

namespace {

using E = mrib_attrib_entry_pod;
using I = mrib_attrib_intrf_pod;

class RouteFlagsTest : public ::testing::Test {
 protected:
  void SetUp() override { ostrel_platform_detail = 0; }
  void TearDown() override { ostrel_platform_detail = 0; }

  // The formatted text, whose length must be what the formatter returned.
  template <typename Attr>
  static std::string text(const Attr& attr) {
    char buf[128];
    int written;
    if constexpr (std::is_same_v<Attr, E>) {
      written = ostrel_fmt_entry_flags(buf, sizeof buf, &attr);
    } else {
      written = ostrel_fmt_intf_flags(buf, sizeof buf, &attr);
    }
    EXPECT_EQ(static_cast<size_t>(written), std::strlen(buf));
    return buf;
  }

  // A set with the given words set, or with every word set when none is given: both sets are nothing but
  // 32-bit words.
  template <typename Attr>
  static Attr with(std::initializer_list<uint32_t Attr::*> fields = {}) {
    Attr attr{};
    if (fields.size() == 0) {
      uint32_t words[sizeof(Attr) / sizeof(uint32_t)];
      static_assert(sizeof words == sizeof attr);
      for (uint32_t& word : words) word = 1;
      std::memcpy(&attr, words, sizeof attr);
    }
    for (uint32_t Attr::*field : fields) attr.*field = 1;
    return attr;
  }
};

// With every word set, the texts show the output order and which rows need -D.
TEST_F(RouteFlagsTest, FullSetsInOutputOrderWithDetailRowsOnlyUnderDetail) {
  const auto entry = with<E>();
  const auto intf = with<I>();
  EXPECT_EQ("L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX MDT_IFH P MoFE MoFS AT X ICD",
            text(entry));
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            text(intf));
  ostrel_platform_detail = 1;
  EXPECT_EQ(
      "L E S C IA IF D RPF MNSF ME MD MH MBH ML MLF PM MA MT CD MPLS EX EID RPFID MDT_IFH P MoFE MoFS MoFP "
      "MoFB AT X ICD",
      text(entry));
  EXPECT_EQ("F A A2 IC NS DP SP II ID LI LD DI EI PC EG MI LMI TMI IRMI MT MA LVIF EX TR AT TRMI MH",
            text(intf));
}

// Sets whose words lie apart in the record, or that only -D shows, print their own words and no others;
// IsForwardMPLS has no word ("MPLS" is IsViaLSM).
TEST_F(RouteFlagsTest, PartialSetsPrintTheirOwnWords) {
  EXPECT_EQ("PM MA X ICD", text(with<E>({&E::IsPlatformModified, &E::VXLAN, &E::InitialConvergenceDone,
                                         &E::IsMDTAddressOn, &E::IsForwardMPLS})));
  EXPECT_EQ("MPLS", text(with<E>({&E::IsViaLSM})));
  const auto entry = with<E>({&E::EncapsulationIdentifierFlag, &E::IsMDTInterfaceSpecialOn,
                              &E::CandidateMOFRR, &E::MOFRRPrimary, &E::MOFRRBackup, &E::RPFIdentifierFlag});
  const auto intf = with<I>({&I::IsForward, &I::IsEncapsulationInterface, &I::IsUnderlyingPhysicalChange,
                             &I::IsEgressInterface, &I::IsP2MPInterface, &I::IsExtranet});
  EXPECT_EQ("MDT_IFH MoFE", text(entry));
  EXPECT_EQ("F EI PC LVIF EX", text(intf));
  ostrel_platform_detail = 1;
  EXPECT_EQ("EID RPFID MDT_IFH MoFE MoFP MoFB", text(entry));
  EXPECT_EQ("F EI PC EG LVIF EX", text(intf));
}

TEST_F(RouteFlagsTest, ShortBuffersCutTheTextWithinTheirSizeAndNoRoomLeavesThemAlone) {
  const auto all = with<E>();
  char buf[8];
  std::memset(buf, '#', sizeof buf);
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, 0, &all));
  EXPECT_EQ(0, ostrel_fmt_entry_flags(buf, -5, &all));
  EXPECT_EQ(0, std::memcmp(buf, "########", sizeof buf));
  const auto entry = with<E>({&E::IsDirectlyConnectedCheckSet, &E::IsRPFNeighborPresent, &E::IsMDTAddressOn});
  EXPECT_EQ(3, ostrel_fmt_entry_flags(buf, 4, &entry));
  EXPECT_STREQ("C R", buf);
  EXPECT_EQ('#', buf[4]);
  const auto intf = with<I>({&I::IsForward, &I::IsAccept});
  std::memset(buf, '#', sizeof buf);
  EXPECT_EQ(0, ostrel_fmt_intf_flags(buf, 1, &intf));
  EXPECT_EQ('\0', buf[0]);
  EXPECT_EQ('#', buf[1]);
}

// Whether a set of one word is worth showing, without and with -D. "ICD" and, without -D, "MT" are printed
// although they do not count.
TEST_F(RouteFlagsTest, PredicatesLeaveOutForwardMplsConvergenceAndDetailWordsWithoutDetail) {
  const struct {
    uint32_t E::*field;
    uint32_t plain, detail;
  } entries[] = {{&E::IsForwardMPLS, 0, 0},
                 {&E::InitialConvergenceDone, 0, 0},
                 {&E::EncapsulationIdentifierFlag, 0, 1},
                 {&E::RPFIdentifierFlag, 0, 1},
                 {&E::MOFRRPrimary, 0, 1},
                 {&E::MOFRRBackup, 0, 1},
                 {&E::IsMDTInterfaceSpecialOn, 1, 1},
                 {&E::VXLAN, 1, 1}};
  const struct {
    uint32_t I::*field;
    uint32_t plain, detail;
  } intfs[] = {{&I::IsEgressInterface, 0, 1},
               {&I::IsMDTDataTriggered, 0, 1},
               {&I::IsMDTDataUsed, 0, 1},
               {&I::EVPN_MH_Interface, 1, 1}};
  for (int detail : {0, 1}) {
    ostrel_platform_detail = detail;
    for (size_t i = 0; i < std::size(entries); ++i) {
      const auto attr = with<E>({entries[i].field});
      EXPECT_EQ(detail ? entries[i].detail : entries[i].plain, ostrel_entry_flags_any(&attr)) << i << detail;
    }
    for (size_t i = 0; i < std::size(intfs); ++i) {
      const auto attr = with<I>({intfs[i].field});
      EXPECT_EQ(detail ? intfs[i].detail : intfs[i].plain, ostrel_intf_flags_any(&attr)) << i << detail;
    }
  }
  ostrel_platform_detail = 0;
  EXPECT_EQ("ICD", text(with<E>({&E::InitialConvergenceDone})));
  EXPECT_EQ("MT", text(with<I>({&I::IsMDTDataTriggered})));
}

}  // namespace
