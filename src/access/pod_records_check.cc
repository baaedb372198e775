// Compile-time proof that the structures of pod_records.h are the decoded layouts of their schemas: for every
// structure, its size and alignment, and for every member, in order, its name, offset, width and (for an
// array) element size. A schema edit that a structure does not follow, or the reverse, stops the build here.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "access/pod_records.h"
#include "access/pod_schemas.h"
#include "access/pod_tables.h"

namespace {

using ostrel::pod::Field;
using ostrel::pod::Kind;
using ostrel::pod::Tables;
using ostrel::pod::TypeDef;

struct Member {
  std::string_view name;
  uint64_t offset;
  uint64_t size;
  uint64_t element_size;  // of a pod_array's elements, else 0
};

template <typename M>
struct ArrayElement {
  static constexpr uint64_t size = 0;
};
template <typename E>
struct ArrayElement<pod_array<E>> {
  static constexpr uint64_t size = sizeof(E);
};

constexpr int kCountMismatch = 1000;

// The index of the first member that differs from the schema's field at the same place, kCountMismatch when
// the numbers of members and fields differ, or -1 when all agree. `kNumber` 0 stands for the record type.
template <const char* kSchema, uint32_t kNumber, size_t kCount>
constexpr int first_mismatch(const Member (&members)[kCount]) {
  using T = Tables<kSchema>;
  const auto& schema = T::kSchema;
  const TypeDef& type = kNumber == 0 ? schema.record() : *schema.find_type(kNumber);
  if (static_cast<size_t>(type.field_count) != kCount) return kCountMismatch;
  for (size_t i = 0; i < kCount; ++i) {
    const Member& m = members[i];
    const Field& f = schema.fields[type.first_field + static_cast<int>(i)];
    uint64_t offset = kNumber == 0 ? T::offset_of(m.name) : T::offset_of(kNumber, m.name);
    bool element_ok = f.kind == Kind::kArray ? schema.element(f).size == m.element_size : m.element_size == 0;
    if (f.name != m.name || offset != m.offset || f.size != m.size || !element_ok) return static_cast<int>(i);
  }
  return -1;
}

template <const char* kSchema, uint32_t kNumber>
constexpr uint64_t schema_size() {
  return kNumber == 0 ? Tables<kSchema>::size() : Tables<kSchema>::size_of(kNumber);
}

template <const char* kSchema, uint32_t kNumber>
constexpr uint64_t schema_align() {
  const auto& schema = Tables<kSchema>::kSchema;
  return kNumber == 0 ? schema.record().align : schema.find_type(kNumber)->align;
}

}  // namespace

// One member per line: its name, offset, width and element size.
#define M(field) Member{#field, offsetof(S, field), sizeof(S::field), ArrayElement<decltype(S::field)>::size},

// Structure `type` against sub-type `number` of the schema of record type `schema_name` (0: the record).
#define OSTREL_CHECK_TYPE(schema_name, number, type, ...)                                                  \
  namespace check_##type {                                                                                 \
    using S = type;                                                                                        \
    constexpr Member kMembers[] = {__VA_ARGS__};                                                           \
    constexpr int kMismatch = first_mismatch<ostrel::schema::schema_name, number>(kMembers);               \
    static_assert(kMismatch == -1, #type                                                                   \
                  ": the member at index kMismatch differs from the schema field "                         \
                  "(1000: the counts differ)");                                                            \
    static_assert(sizeof(S) == schema_size<ostrel::schema::schema_name, number>(), #type ": size");        \
    static_assert(alignof(S) == schema_align<ostrel::schema::schema_name, number>(), #type ": alignment"); \
  }
// A record type against its own schema.
#define OSTREL_CHECK_RECORD(type, ...) OSTREL_CHECK_TYPE(type, 0, type, __VA_ARGS__)

// The address union has no fields of its own: its discriminator and value offsets are checked directly.
namespace check_mrib_addrtype {
using T = Tables<ostrel::schema::mrib_group_rng_pod>;
constexpr const TypeDef& kUnion = *T::kSchema.find_type(60);
static_assert(sizeof(mrib_addrtype) == T::size_of(60) && alignof(mrib_addrtype) == kUnion.align);
static_assert(offsetof(mrib_addrtype, AFName) == 0);
static_assert(offsetof(mrib_addrtype, IPV4Address) == T::kSchema.union_of(kUnion).value_offset);
static_assert(offsetof(mrib_addrtype, IPV6Address) == T::kSchema.union_of(kUnion).value_offset);
static_assert(sizeof(mrib_addrtype::IPV6Address) == T::size_of(59));
}  // namespace check_mrib_addrtype

// clang-format off
OSTREL_CHECK_RECORD(mrib_timespec,
  M(Seconds)
  M(Nanoseconds))

OSTREL_CHECK_RECORD(mrib_ctid_pod,
  M(TYPE)
  M(ID))

OSTREL_CHECK_RECORD(mrib_attrib_entry_pod,
  M(IsDomainLocalSource)
  M(IsSourceExternal)
  M(IsSignalByDefaultOn)
  M(IsDirectlyConnectedCheckSet)
  M(IsInheritAcceptSet)
  M(IsInheritFromSet)
  M(IsDrop)
  M(IsRPFNeighborPresent)
  M(IsMulticastNSFOn)
  M(IsMDTEncapsulationOn)
  M(IsMDTDecapsulationOn)
  M(IsMDTInterfaceOn)
  M(IsMDT_BGPInterfaceOn)
  M(IsMasterLCOn)
  M(IsMasterLCFallbackOn)
  M(IsMDTAddressOn)
  M(IsPlatformModified)
  M(IsThresholdCrossed)
  M(IsConditionalDecap)
  M(IsViaLSM)
  M(IsForwardMPLS)
  M(IsExtranet)
  M(IsMDTInterfaceSpecialOn)
  M(EncapsulationIdentifierFlag)
  M(RPFIdentifierFlag)
  M(CandidateMOFRR)
  M(MOFRRState)
  M(MOFRRPrimary)
  M(MOFRRBackup)
  M(Protocol)
  M(AMT)
  M(InitialConvergenceDone)
  M(VXLAN))

OSTREL_CHECK_RECORD(mrib_attrib_intrf_pod,
  M(IsForward)
  M(IsAccept)
  M(IsAcceptBackup)
  M(IsInternalCopy)
  M(IsNegateSignal)
  M(IsDontPreserve)
  M(IsSignalPresent)
  M(IsInternalInterest)
  M(IsInternalDisinterest)
  M(IsLocalInterest)
  M(IsLocalDisinterest)
  M(IsDecapsulationInterface)
  M(IsUnderlyingPhysicalChange)
  M(IsEncapsulationInterface)
  M(IsEgressInterface)
  M(IsExtranet)
  M(IsMDTInterface)
  M(IsMLDP_MDTInterface)
  M(IsRSVP_TE_MDTInterface)
  M(IsIR_MDTInterface)
  M(IsMDTDataTriggered)
  M(IsMDTDataUsed)
  M(IsP2MPInterface)
  M(IsTurnAround)
  M(AMT)
  M(IsTR_MDTInterface)
  M(EVPN_MH_Interface))

OSTREL_CHECK_RECORD(mrib_group_rng_pod,
  M(GroupPrefix)
  M(GroupPrefixLength))

OSTREL_CHECK_RECORD(mrib_intrf_pod,
  M(Interface)
  M(UnderlyingInterface)
  M(UnderlyingInterfaceNode)
  M(InterfaceAttributes)
  M(Uptime)
  M(liAddRedistCount)
  M(liDelRedistCount)
  M(ifMdfAttr)
  M(BackupFgidAdded)
  M(InterfacePointer)
  M(NextEncapsulationPointer)
  M(HeadLSMIdentifier)
  M(GREEncapsulationSourceAddress)
  M(GREEncapsulationGroupAddress)
  M(Type)
  M(AMTPort)
  M(AMTNexthop)
  M(AMT_MTU)
  M(AMT_TOS)
  M(AMT_TTL)
  M(AMTGateway)
  M(AMTSource)
  M(AMTId)
  M(RegDBPointer)
  M(NextRegDBole)
  M(PreviousRegDBOle)
  M(NSFInterfaceAttributes)
  M(EVPN_MH_Annot)
  M(PreviousVirutalInterfacePointer)
  M(NextVirutalInterfacePointer)
  M(PreviousPhysicalInterfacePointer)
  M(NextPhysicalInterfacePointer)
  M(Linked_IF_TyepPointer))

OSTREL_CHECK_RECORD(mrib_out_intrf_stat_pod,
  M(InterfaceHandle)
  M(BitsSOutRate)
  M(PacketsOutRate)
  M(HardwareEgressPacketsOut)
  M(HardwareEgressBytesOut)
  M(HardwareEgressPacketsDrop)
  M(IsHardwareEgressOutputCounterValidOnInterface)
  M(IsHardwareEgressDropCounterValidOnInterface))

OSTREL_CHECK_RECORD(mrib_incoming_rate_pod,
  M(NodeID)
  M(PacketsInRate)
  M(BitsInRate)
  M(HardwareIngressFwd)
  M(HardwareIngressDrop))

OSTREL_CHECK_RECORD(mrib_outgoing_rate_pod,
  M(NodeID)
  M(PacketsOutRate)
  M(BitsOutRate)
  M(HardwareEgressFwd)
  M(HardwareEgressDrop)
  M(InterfaceStats))

OSTREL_CHECK_RECORD(mrib_route_pod,
  M(Source)
  M(GroupRange)
  M(OrigSource)
  M(ParentRange)
  M(RouteVersion)
  M(IsCustomerEncapsulationRoute)
  M(RPFNeighbor)
  M(RPFTableID)
  M(MDTCoreTreeIdentifier)
  M(CustomerTableID)
  M(RemoteCustomerTableID)
  M(MDTInterfaceHandle)
  M(MDTTurnaroundEnabled)
  M(MDT_BGP_InterfaceHandle)
  M(Payload)
  M(MasterLCFapid)
  M(MasterLCFallbackFapid)
  M(MT_LC_Fapid)
  M(EntryAttributes)
  M(EntryAttrMdf)
  M(Interfaces)
  M(Annotation)
  M(Uptime)
  M(MDT_InterfaceHandle)
  M(RPFIdentifier)
  M(MoFRRActive)
  M(MoFRRSeqNo)
  M(EncapsulationIdentifier)
  M(NewEncapPointer)
  M(NewEncapsulationIdentifier)
  M(InExpiredDB)
  M(OutgoingRates)
  M(IncomingRates)
  M(AcceptInterfaceCount)
  M(ForwardInterfaceCount)
  M(LRForwardInterfaceCount)
  M(RouteNode)
  M(EncapsulationPointer)
  M(EncapNextRoute)
  M(EncapsulationList)
  M(TECount)
  M(LSPVIFCount)
  M(GRECount)
  M(EncapTunnelCount)
  M(ProtocolValue)
  M(ProtocolRPAddress)
  M(NSFEntryAttributes)
  M(InPDRetryList))

OSTREL_CHECK_RECORD(mrib_route_ole_pod,
  M(Source)
  M(GroupRange)
  M(Uptime)
  M(OLECount)
  M(EntryAttributes))

OSTREL_CHECK_RECORD(mrib_db_summ_pod,
  M(GroupRanges)
  M(GRoutes)
  M(SGRoutes)
  M(ForwardingInterfaceCount)
  M(RouteInterfaceCount))

OSTREL_CHECK_RECORD(mrib_client_pod,
  M(ClientConnectionID)
  M(ClientID)
  M(IsActive)
  M(RegisteredTableCount)
  M(ClientType)
  M(ClientReadState)
  M(ParentID)
  M(ClientUptimeInSecs)
  M(ClientName)
  M(ClientInstanceID)
  M(PurgeDelaySecs)
  M(PurgeRemainSecs)
  M(NSFCapable)
  M(NSFInterest)
  M(ResyncTimeSecs)
  M(NSFRestartTimeSecs)
  M(NSFRecoveryTimeSecs))

OSTREL_CHECK_RECORD(mrib_simple_filter_pod,
  M(EntryAttributes)
  M(InterfaceAttributes)
  M(IncludeGroups)
  M(ExcludeGroups)
  M(IncludeInterfaces)
  M(ExcludeInterfaces)
  M(next))

OSTREL_CHECK_RECORD(mrib_filter_pod,
  M(ClientConnectionID)
  M(FilterInterest)
  M(FilterOwned)
  M(ClientName)
  M(ClientInstanceID))

OSTREL_CHECK_RECORD(mrib_lib_intf_pod,
  M(InterfaceHandle)
  M(HeadLSMIdentifier)
  M(MRIBAttributes)
  M(InterfaceAttributesSet)
  M(InterfaceAttributesModified)
  M(ModifiedInterfaceListNext)
  M(Type)
  M(AMTGateway)
  M(AMTPort)
  M(UnderlyingInterface)
  M(AMTInterface)
  M(AMTSourceAddress)
  M(AMTNexthop)
  M(AMT_MTU)
  M(AMT_TOS)
  M(AMT_TTL))

OSTREL_CHECK_RECORD(mrib_lib_route_pod,
  M(TableID)
  M(Source)
  M(Group)
  M(GroupLength)
  M(MRIBAttributes)
  M(RouteAttributes)
  M(RouteAttributesModified)
  M(RPFNeighbor)
  M(MDTCoreTreeIdentifier)
  M(RPFTableID)
  M(MDTInterface)
  M(MDTTurnaroundEnabled)
  M(MVPNAssociatedTableIDs)
  M(MDTInterfaceHandle)
  M(MDTPayload)
  M(DecapsulationRPFIdentifier)
  M(MDT_BGP_InterfaceHandle)
  M(FallbackMasterLineCard)
  M(vFallbackMasterLCInterfaceHandle)
  M(RPFIdentifier)
  M(ProtocolValue)
  M(ProtocolRPAddress)
  M(UpdateInProgress)
  M(ModifiedRouteListNext)
  M(ModifiedInterfaceListHead)
  M(ModifiedInterfaceListTail)
  M(InterfaceList))

OSTREL_CHECK_RECORD(mrib_nsf_pod,
  M(IsMulticastNSF)
  M(IsMulticastCOFONSF)
  M(MulticastNSFTimeout)
  M(MulticastNSFTimeLeft)
  M(MRIBConnTimer)
  M(MRIBConnTimeLeft)
  M(ClientInfo)
  M(NsfOnCount)
  M(NsfOffCount)
  M(NsfLastEnabled)
  M(NsfLastDisabled)
  M(RespawnCount)
  M(LastNSFOn)
  M(LastNSFOff)
  M(LastNSFOnSec)
  M(LastNSFOffSec)
  M(LastICDNotifSent)
  M(LastICDNotifSentSec)
  M(LastRemoteNSFOn)
  M(LastRemoteNSFOff)
  M(LastLabelMldpNSFOn)
  M(LastLabelMldpNSFOff)
  M(LastLabelTeNSFOn)
  M(LastLabelte_NSFOff)
  M(LastLabelPimNSFOn)
  M(LastLabelPimNSFOff)
  M(LastLabelPim6NSFOn)
  M(LastLabelPim6_NSFOff)
  M(LastLabelKVRNSFOn)
  M(LastLabelKVR_NSFOff)
  M(LastRemoteNSFOnSec)
  M(LastRemoteNSFOffSec)
  M(LastLabelMldpNSFOnSec)
  M(LastLabelMldpNSFOffSec)
  M(LastLabelTeNSFOnSec)
  M(LastLabelte_NSFOffSec)
  M(LastLabelPimNSFOnSec)
  M(LastLabelPim_NSFOffSec)
  M(LastLabelPim6NSFOnSec)
  M(LastLabelPim6_NSFOffSec)
  M(LastLabelKVRNSFOnSec)
  M(LastLabelKVRNSFOffSec)
  M(LmribNSFClients)
  M(CurrLmribClients)
  M(ConvLmribClients)
  M(IsIPInNSF)
  M(IsIPAssumedInNSF))

OSTREL_CHECK_RECORD(mrib_rc_ipc_pod,
  M(IPCName)
  M(ItemsInRing)
  M(ConsumerWaiting)
  M(ProducerFlags)
  M(NodeUpdates)
  M(SharedMemoryOpenFailures)
  M(SharedMemoryFstatFailures)
  M(SharedMemorySizeFailures)
  M(SharedMemoryMapFailures)
  M(SharedMemoryHeaderFailures))

OSTREL_CHECK_RECORD(mrib_chkpt_table_stats,
  M(TableDescription)
  M(TableName)
  M(IsMirrored)
  M(Statistics))

OSTREL_CHECK_RECORD(mrib_chkpt_stats,
  M(CheckpointTables))

OSTREL_CHECK_RECORD(mrib_rpfid_spe_info,
  M(addr)
  M(rpf_id)
  M(id_alloc)
  M(tbl_id)
  M(mdt_ifh)
  M(ipv6_interest)
  M(stale)
  M(chkpt_obj_id)
  M(dep_route_list_cnt)
  M(dep_core_route_list_cnt)
  M(dep_label_list_cnt)
  M(in_pd_retry_list)
  M(Annotation))

OSTREL_CHECK_RECORD(mrib_rpfid_spe_summ_info,
  M(rpfid_count)
  M(id_alloc_count)
  M(v6_interest_count)
  M(stale_count)
  M(null_dep_route_list_count)
  M(null_dep_core_route_list_count)
  M(null_dep_label_list_count)
  M(in_pd_retry_list_count))

OSTREL_CHECK_RECORD(mrib_nsr_end_info,
  M(event_tm)
  M(idx)
  M(ClientType)
  M(num_tbl_with_purged_attr)
  M(num_e_with_purged_e_attr)
  M(num_e_with_purged_if_attr)
  M(num_if_with_purged_if_attr))

OSTREL_CHECK_RECORD(mrib_cc_sg_pod,
  M(Table_Id)
  M(RouteGroupAddress)
  M(RouteSourceAddress)
  M(Data))

OSTREL_CHECK_RECORD(mrib_cc_rt_sum_pod,
  M(NodeID)
  M(PfxScanned)
  M(PfxConsistent)
  M(SGList))

OSTREL_CHECK_RECORD(mrib_cc_rt_pod,
  M(RTSummary))

OSTREL_CHECK_RECORD(mrib_attr_stat_pod,
  M(AddRcvdCount)
  M(DelRcvdCount)
  M(AddRedistCount)
  M(DelRedistCount))

OSTREL_CHECK_RECORD(mrib_table_info_pod,
  M(TableID)
  M(TableName)
  M(RegisteredClient)
  M(TableMDTNameGRE)
  M(TableGRETurnaround)
  M(TableMDTNameMLDP)
  M(TableMLDPTurnaround)
  M(TableMDTNameP2MPTE)
  M(TableP2MPTETurnaround)
  M(TableMDTNameIR)
  M(TableIRTurnaround)
  M(TableMDTNameTreeSID)
  M(TableTreeSIDTurnaround)
  M(TableMLCFallbackFapID)
  M(TableVirtualMLCFallbackFapID)
  M(TableMDTAddress)
  M(MDTSource)
  M(MTStat)
  M(MAStat))

OSTREL_CHECK_RECORD(mrib_label_table_info_pod,
  M(TableID)
  M(TableName)
  M(RegisteredClient))

OSTREL_CHECK_RECORD(mrib_mdt_node_pod,
  M(Fapid)
  M(ReferenceCount1)
  M(ReferenceCount2)
  M(ReferenceCount3)
  M(IsMLCFallback)
  M(IsRemote)
  M(IsNSFRemote)
  M(IsRemoteEncap))

OSTREL_CHECK_RECORD(mrib_tlc_mdt_pod,
  M(MDTCoreTreeIdentifier)
  M(MDTTableID)
  M(MDTRemoteTableID)
  M(RemoteLCTableID)
  M(RemoteMasterLCFapid)
  M(RemoteLCNodeList))

OSTREL_CHECK_RECORD(mrib_tlc_pod,
  M(TLCTableID)
  M(TLCTableName)
  M(MLCFapid)
  M(vFallbackMasterLCInterfaceHandle)
  M(NodeList)
  M(MDTList))

OSTREL_CHECK_RECORD(mrib_rc_routedb_pod,
  M(RCTableID)
  M(RCSourceAddress)
  M(RCGroupAddress)
  M(RCGroupPrefixLength))

OSTREL_CHECK_RECORD(mrib_rc_eole_db_pod,
  M(RCEncapsulationIdentifier))

OSTREL_CHECK_RECORD(mrib_rc_mdt_pod,
  M(RC_MDTAddress)
  M(RC_MDTTableID)
  M(RC_MDTRemoteTableID)
  M(RC_TLCTableID)
  M(RCRemoteTLCTableID)
  M(CustomerList)
  M(EncapOLEList)
  M(CoreList)
  M(CoreEgressList))

OSTREL_CHECK_RECORD(mrib_iir_sub_node_pod,
  M(SubInterface)
  M(SubInterfaceName)
  M(SubInterfacePointer)
  M(SubInterfaceNameNextPointer)
  M(ReferenceCount))

OSTREL_CHECK_RECORD(mrib_iir_route_pod,
  M(IIRRouteTableID)
  M(IIRSourceAddress)
  M(IIRGroupAddress)
  M(IIRGroupPrefixLength)
  M(VirtualInterfaceCount)
  M(VirtualInterfaceList)
  M(VirtualInterface)
  M(ChildInterface)
  M(AMT)
  M(EntryPointer))

OSTREL_CHECK_RECORD(mrib_iir_label_pod,
  M(Label)
  M(VirtualInterface)
  M(RecursiveOutgoinfInfo)
  M(EntryPointer))

OSTREL_CHECK_RECORD(mrib_iir_intf_pod,
  M(IIRInterface)
  M(IIRInterfaceName)
  M(IsVirtualInterface)
  M(IsIIRNotifiedInterface)
  M(IsDeleteInProgress)
  M(ChildCount)
  M(RouteList)
  M(PrimaryLabelList)
  M(BackupLabelList)
  M(ParentList)
  M(ChildList)
  M(InterfaceCharacter)
  M(InterfaceType)
  M(ParentInterfaceType)
  M(IfName)
  M(InterfaceULIndex)
  M(NHLabelOleHead)
  M(NHLabelOlecount)
  M(NHLabelRecursiveOleHead)
  M(NHLabelRecursiveOlecount)
  M(NHBackupLabelOleHead)
  M(NHBackupLabelOlecount)
  M(NHBackupLabelRecursiveOleHead)
  M(NHBackupLabelRecursiveOlecount)
  M(IPRouteOleHead)
  M(IPRouteOlecount)
  M(IPRouteAMTOleHead)
  M(IPRouteAMTOlecount)
  M(ChildSubInterfaceNameHeadPointer)
  M(EntryPointer)
  M(RehashThreshold))

OSTREL_CHECK_RECORD(mrib_mdt_routedb_pod,
  M(MDTRouteSourceAddress)
  M(MDTRouteGroupAddress)
  M(MDTRouteGroupPrefixLength)
  M(MDTRouteTableID)
  M(MDTRemoteReprograming))

OSTREL_CHECK_RECORD(mrib_mdt_ifh_pod,
  M(MDTInterface)
  M(MDTInterfaceTableID)
  M(MHReferenceCount)
  M(IntranetReferenceCount)
  M(ExtranetReferenceCount)
  M(MDTUpTime)
  M(MDTRouteDB))

OSTREL_CHECK_RECORD(mrib_bvi_mroute_pod,
  M(Source)
  M(GroupRange))

OSTREL_CHECK_RECORD(mrib_bvi_route_pod,
  M(Source)
  M(GroupRange)
  M(BVIIfhandle)
  M(BVIPlatformDataLength)
  M(BVIPlatformData)
  M(MRoute)
  M(TableName)
  M(Uptime)
  M(RefCount))

OSTREL_CHECK_RECORD(mrib_bvi_interface_pod,
  M(BVI_Name)
  M(Table_Id)
  M(TableName))

OSTREL_CHECK_RECORD(mrib_bvi_route_summ_pod,
  M(RxMrouteAdd)
  M(RxMrouteDel)
  M(RxMrouteUnk)
  M(RxBulkStart)
  M(RxBulkEnd)
  M(RxMarkStale)
  M(RxEod)
  M(RxNfnUnk)
  M(l2fibConnect)
  M(moveBVIDBfromdflt2vrf)
  M(moveBVIDBfromvrf2dflt)
  M(move1BVIDB)
  M(moveBVIDBVrfToVrf)
  M(insertBVIDBEn)
  M(deleteBVIDBEn)
  M(expDelBVIDBEn)
  M(IparmAddDbMove)
  M(mrteAddNoMapUseDfltTbl)
  M(mrteAddNoVrfTblUseDflt)
  M(mrteAddNoDfltTbl)
  M(MoveBviDbNoTable)
  M(mrouteAddPrgmBviIfErr)
  M(mrouteDelPrgmBVIIfErr)
  M(moveBVIIfErr)
  M(move1BVIEnErr)
  M(BVIUpdMoveBVIDBErr)
  M(IMIPAddrNfnMoveBVIDBErr)
  M(l2fibConnectErr)
  M(l2fibDisconnect)
  M(BviIntfMdfErr)
  M(BviIntfMdfErr1)
  M(BviIntfMdfErr2)
  M(BviIntfMdfErr3)
  M(IparmAddErr)
  M(StgSgUpdNoFloodEntry)
  M(BviOleDelMissingL2Fib)
  M(BviIfInsertNoMem)
  M(BviIfInsertNoMribEn)
  M(IfcInsert0Dup)
  M(BviIfInsertOnOldTree)
  M(BviIfCantDelOldTree)
  M(IfcInsertFailer)
  M(IfcDelBadParam)
  M(IfcDelNoBviEn)
  M(IfcDelFailed)
  M(MoveInterfaceNoOle)
  M(IfcNodeLinkNoL3Ole)
  M(IfcNodeLinkNoBviIfData)
  M(IfcNodeLinkNoBviEnpt)
  M(BviInsDelFail)
  M(L2fibSgStarGNoL3Ole)
  M(L2UpdNotLinked)
  M(L2UpdXcBviEntry)
  M(DelBviEntryFailed)
  M(BviIfDanglingOleDel)
  M(BviIfDanglingOleDelNot)
  M(BviLsmNodeAddFail)
  M(BviLsmNodeDelNotFound)
  M(BviLsmNodeDelFail))

OSTREL_CHECK_RECORD(mrib_nh_path_pod,
  M(MRIBNHString)
  M(OutIntf)
  M(PrimCount)
  M(BackupCount))

OSTREL_CHECK_RECORD(mrib_regdb_pod,
  M(RegistrationType)
  M(NHAddr)
  M(Label)
  M(RegdbIpLeafCount)
  M(RegdbLblLeafCount)
  M(RegdbMlclLeafCount)
  M(RegIsECDStale)
  M(RegIsECDReg)
  M(PDActiveRestriction)
  M(PDBackupRestriction)
  M(ECDInfoPointer)
  M(ECDLen)
  M(IPOleHeadPointer)
  M(LabelOleHeadPointer)
  M(MlcOleHeadPointer)
  M(NotificationCount)
  M(DestVrfName)
  M(notified_ts)
  M(PathList))

OSTREL_CHECK_RECORD(mrib_ole_pod,
  M(Label)
  M(OleNH))

OSTREL_CHECK_RECORD(mrib_tedb_lsp_pod,
  M(LocalLabel)
  M(TeBindDone)
  M(PrimOutIntf)
  M(PrimNH)
  M(PrimOutLabel)
  M(BackupIntf)
  M(BackupOutIntf)
  M(BkupNH)
  M(MPLabel)
  M(BkupTunLabel))

OSTREL_CHECK_RECORD(mrib_tedb_pod,
  M(TunnelIDCtx)
  M(TunnelIFh)
  M(LSPCount)
  M(LSPList)
  M(OleCount)
  M(OleHeadPointer)
  M(NotificationCount)
  M(notified_ts)
  M(OLEList))

OSTREL_CHECK_RECORD(mrib_mpls_bkup_tun_pod,
  M(ProtectedInterface)
  M(BackupTunnel)
  M(BackupOutIntf)
  M(BackupLabel)
  M(BackupActive)
  M(InLabels))

OSTREL_CHECK_RECORD(mrib_mpls_bkup_pod,
  M(TE_Client)
  M(LMRIB_Entry)
  M(ProtIfName)
  M(BackupTunnels))

OSTREL_CHECK_TYPE(mrib_encapid_pod, 64, mrib_encapid_redist_pod,
  M(redist_flags)
  M(client_id)
  M(client_redist_time))

OSTREL_CHECK_RECORD(mrib_encapid_ole_pod,
  M(TYPE)
  M(OleKey))

OSTREL_CHECK_RECORD(mrib_encapid_node_pod,
  M(NodeID)
  M(Refcount))

OSTREL_CHECK_RECORD(mrib_encapid_tblid_pod,
  M(ETableID)
  M(Refcount))

OSTREL_CHECK_RECORD(mrib_encapid_pod,
  M(EncapIDKey)
  M(EncapID)
  M(RedistInfo)
  M(ExpirationTime)
  M(ExpirationValid)
  M(VrfLite)
  M(V6VrfLite)
  M(Stale)
  M(IPV6Usage)
  M(RouteCount)
  M(Annotation)
  M(EncapsulationNode)
  M(DependencyRouteList)
  M(DependencyLabelList)
  M(EncapIdOle)
  M(NodeIDList)
  M(BackupNodeIDList)
  M(EncapTIdList)
  M(InPDRetryList)
  M(IsLabelEncap)
  M(IsWTXCommunicationFailed))

OSTREL_CHECK_RECORD(mrib_encapid_summary,
  M(eid_count)
  M(vrflite_count)
  M(v6vrflite_count)
  M(v6usage_count)
  M(stale_count)
  M(pd_retry_count)
  M(sby_chkpt_pulse_sent)
  M(sby_chkpt_pulse_received))

OSTREL_CHECK_RECORD(mrib_gw_id_pod,
  M(ID)
  M(in_bytes)
  M(out_bytes)
  M(in_pkts)
  M(out_pkts))

OSTREL_CHECK_TYPE(mrib_evpn_bkt_pod, 65, mrib_evpn_bkt_info_pod,
  M(redist_flags)
  M(client_id)
  M(client_redist_time))

OSTREL_CHECK_RECORD(mrib_evpn_bkt_pod,
  M(BucketID)
  M(Interface)
  M(State)
  M(Flags)
  M(Uptime)
  M(Info))

OSTREL_CHECK_RECORD(mrib_mpls_db_pod,
  M(CTIDType)
  M(SourcePEAddress)
  M(MTEInterface)
  M(EncapCount)
  M(EncapIdentifiers))

OSTREL_CHECK_RECORD(mrib_amt_intrf_pod,
  M(Interface)
  M(UnderlyingInterface)
  M(UnderlyingInterfaceNode)
  M(InterfaceAttributes)
  M(Uptime)
  M(Expiry)
  M(Type)
  M(AMTPort)
  M(AMTNexthop)
  M(AMT_MTU)
  M(AMT_TOS)
  M(AMT_TTL)
  M(AMTGateway)
  M(AMTSource)
  M(AMTId)
  M(OutPkts)
  M(OutBytes))

OSTREL_CHECK_RECORD(mrib_amt_route_pod,
  M(Source)
  M(GroupRange)
  M(AMT_Interfaces)
  M(AMTIFCount))

OSTREL_CHECK_RECORD(mrib_amt_gw_id_ex_pod,
  M(AMTId)
  M(JoinTime)
  M(ExpireTime)
  M(OutPkts)
  M(OutBytes))

OSTREL_CHECK_RECORD(mrib_amt_route_ex_pod,
  M(Source)
  M(Group)
  M(GWAddress)
  M(GWPort)
  M(GW_IDs)
  M(GWIDCount))

OSTREL_CHECK_RECORD(mrib_amt_route_summary_pod,
  M(Source)
  M(GroupRange)
  M(AMTGatewayCount)
  M(ActivePacketsSent)
  M(ActiveBytesSent)
  M(ExPacketsSent)
  M(ExBytesSent))

OSTREL_CHECK_RECORD(mrib_amt_gw_active_route_pod,
  M(Source)
  M(Group)
  M(AMTId)
  M(JoinTime)
  M(OutPkts)
  M(OutBytes))

OSTREL_CHECK_RECORD(mrib_amt_gw_pod,
  M(GW_Addr)
  M(GW_Port)
  M(ActiveRoutes))

OSTREL_CHECK_RECORD(mrib_amt_gw_ex_route_pod,
  M(Source)
  M(Group)
  M(AMTId)
  M(JoinTime)
  M(ExpireTime)
  M(OutPkts)
  M(OutBytes))

OSTREL_CHECK_RECORD(mrib_amt_gw_ex_pod,
  M(GW_Addr)
  M(GW_Port)
  M(ExpiredRoutes))

OSTREL_CHECK_RECORD(mrib_amt_gw_summary_pod,
  M(GW_Addr)
  M(GW_Port)
  M(ActiveRouteCount)
  M(OutPkts)
  M(OutBytes)
  M(OutExPkts)
  M(OutExBytes))

// clang-format on

#undef OSTREL_CHECK_RECORD
#undef OSTREL_CHECK_TYPE
#undef M
