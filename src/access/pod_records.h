// The decoded plain structures of the record types that views read, and of every type embedded in them.
// pod_decode() fills them at the offsets the descriptors state; pod_records_check.cc proves at compile time
// that these declarations and the schema strings agree, member by member. Members carry the schema's field
// names so that a view reads {Field} as record.Field.
#pragma once

#include <cstdint>

// a(T): the element count, then the elements that pod_decode() allocated.
template <typename T>
struct pod_array {
  uint64_t count;
  T* data;
};

// ---- Shared sub-types ------------------------------------------------------------------------------------

// The family-tagged address ($60): a union whose value sits at 8 because the 16-byte case is wider than a
// word.
struct alignas(8) mrib_addrtype {
  uint32_t AFName;  // 0 IPv4, 1 IPv6
  uint8_t unused[4];
  union {
    uint32_t IPV4Address;     // network byte order
    uint8_t IPV6Address[16];  // also where an IPv4 address's four bytes begin
  };
};

struct mrib_timespec {
  uint32_t Seconds;
  uint32_t Nanoseconds;
};

struct mrib_ctid_pod {
  int32_t TYPE;
  uint32_t ID;  // IPv4, network byte order
};

// Entry attribute set: one 32-bit boolean per attribute, word n being the nth field.
struct mrib_attrib_entry_pod {
  uint32_t IsDomainLocalSource;
  uint32_t IsSourceExternal;
  uint32_t IsSignalByDefaultOn;
  uint32_t IsDirectlyConnectedCheckSet;
  uint32_t IsInheritAcceptSet;
  uint32_t IsInheritFromSet;
  uint32_t IsDrop;
  uint32_t IsRPFNeighborPresent;
  uint32_t IsMulticastNSFOn;
  uint32_t IsMDTEncapsulationOn;
  uint32_t IsMDTDecapsulationOn;
  uint32_t IsMDTInterfaceOn;
  uint32_t IsMDT_BGPInterfaceOn;
  uint32_t IsMasterLCOn;
  uint32_t IsMasterLCFallbackOn;
  uint32_t IsMDTAddressOn;
  uint32_t IsPlatformModified;
  uint32_t IsThresholdCrossed;
  uint32_t IsConditionalDecap;
  uint32_t IsViaLSM;
  uint32_t IsForwardMPLS;
  uint32_t IsExtranet;
  uint32_t IsMDTInterfaceSpecialOn;
  uint32_t EncapsulationIdentifierFlag;
  uint32_t RPFIdentifierFlag;
  uint32_t CandidateMOFRR;
  uint32_t MOFRRState;
  uint32_t MOFRRPrimary;
  uint32_t MOFRRBackup;
  uint32_t Protocol;
  uint32_t AMT;
  uint32_t InitialConvergenceDone;
  uint32_t VXLAN;
};

// Interface attribute set, laid out like the entry set.
struct mrib_attrib_intrf_pod {
  uint32_t IsForward;
  uint32_t IsAccept;
  uint32_t IsAcceptBackup;
  uint32_t IsInternalCopy;
  uint32_t IsNegateSignal;
  uint32_t IsDontPreserve;
  uint32_t IsSignalPresent;
  uint32_t IsInternalInterest;
  uint32_t IsInternalDisinterest;
  uint32_t IsLocalInterest;
  uint32_t IsLocalDisinterest;
  uint32_t IsDecapsulationInterface;
  uint32_t IsUnderlyingPhysicalChange;
  uint32_t IsEncapsulationInterface;
  uint32_t IsEgressInterface;
  uint32_t IsExtranet;
  uint32_t IsMDTInterface;
  uint32_t IsMLDP_MDTInterface;
  uint32_t IsRSVP_TE_MDTInterface;
  uint32_t IsIR_MDTInterface;
  uint32_t IsMDTDataTriggered;
  uint32_t IsMDTDataUsed;
  uint32_t IsP2MPInterface;
  uint32_t IsTurnAround;
  uint32_t AMT;
  uint32_t IsTR_MDTInterface;
  uint32_t EVPN_MH_Interface;
};

struct mrib_group_rng_pod {
  mrib_addrtype GroupPrefix;
  uint32_t GroupPrefixLength;
};

// ---- Routes --------------------------------------------------------------------------------------------

struct mrib_intrf_pod {
  uint32_t Interface;
  uint32_t UnderlyingInterface;
  uint32_t UnderlyingInterfaceNode;
  mrib_attrib_intrf_pod InterfaceAttributes;
  uint64_t Uptime;
  uint16_t liAddRedistCount;
  uint16_t liDelRedistCount;
  mrib_attrib_intrf_pod ifMdfAttr;
  uint32_t BackupFgidAdded;
  uint64_t InterfacePointer;
  uint64_t NextEncapsulationPointer;
  uint32_t HeadLSMIdentifier;
  uint32_t GREEncapsulationSourceAddress;
  uint32_t GREEncapsulationGroupAddress;
  uint32_t Type;  // 1 AMT, 0 plain
  uint32_t AMTPort;
  uint32_t AMTNexthop;
  uint16_t AMT_MTU;
  uint8_t AMT_TOS;
  uint8_t AMT_TTL;
  uint32_t AMTGateway;
  uint32_t AMTSource;
  uint32_t AMTId;
  uint64_t RegDBPointer;
  uint64_t NextRegDBole;
  uint64_t PreviousRegDBOle;
  mrib_attrib_intrf_pod NSFInterfaceAttributes;
  char* EVPN_MH_Annot;
  uint64_t PreviousVirutalInterfacePointer;
  uint64_t NextVirutalInterfacePointer;
  uint64_t PreviousPhysicalInterfacePointer;
  uint64_t NextPhysicalInterfacePointer;
  uint64_t Linked_IF_TyepPointer;
};

struct mrib_out_intrf_stat_pod {
  uint32_t InterfaceHandle;
  uint64_t BitsSOutRate;
  uint64_t PacketsOutRate;
  uint64_t HardwareEgressPacketsOut;
  uint64_t HardwareEgressBytesOut;
  uint64_t HardwareEgressPacketsDrop;
  uint32_t IsHardwareEgressOutputCounterValidOnInterface;
  uint32_t IsHardwareEgressDropCounterValidOnInterface;
};

struct mrib_incoming_rate_pod {
  uint32_t NodeID;
  uint64_t PacketsInRate;
  uint64_t BitsInRate;
  uint64_t HardwareIngressFwd;
  uint64_t HardwareIngressDrop;
};

struct mrib_outgoing_rate_pod {
  uint32_t NodeID;
  uint64_t PacketsOutRate;
  uint64_t BitsOutRate;
  uint64_t HardwareEgressFwd;
  uint64_t HardwareEgressDrop;
  pod_array<mrib_out_intrf_stat_pod> InterfaceStats;
};

struct mrib_route_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
  mrib_addrtype OrigSource;
  mrib_group_rng_pod ParentRange;
  uint32_t RouteVersion;
  uint32_t IsCustomerEncapsulationRoute;
  mrib_addrtype RPFNeighbor;
  uint32_t RPFTableID;
  mrib_ctid_pod MDTCoreTreeIdentifier;
  uint32_t CustomerTableID;
  uint32_t RemoteCustomerTableID;
  uint32_t MDTInterfaceHandle;
  uint32_t MDTTurnaroundEnabled;
  uint32_t MDT_BGP_InterfaceHandle;
  uint32_t Payload;
  uint32_t MasterLCFapid;
  uint32_t MasterLCFallbackFapid;
  uint32_t MT_LC_Fapid;
  mrib_attrib_entry_pod EntryAttributes;
  mrib_attrib_entry_pod EntryAttrMdf;
  pod_array<mrib_intrf_pod> Interfaces;
  char* Annotation;
  uint64_t Uptime;
  uint32_t MDT_InterfaceHandle;
  uint32_t RPFIdentifier;
  uint32_t MoFRRActive;
  uint32_t MoFRRSeqNo;
  uint32_t EncapsulationIdentifier;
  uint64_t NewEncapPointer;
  uint32_t NewEncapsulationIdentifier;
  uint32_t InExpiredDB;
  pod_array<mrib_outgoing_rate_pod> OutgoingRates;
  mrib_incoming_rate_pod IncomingRates;
  uint32_t AcceptInterfaceCount;
  uint32_t ForwardInterfaceCount;
  uint32_t LRForwardInterfaceCount;
  uint64_t RouteNode;
  uint64_t EncapsulationPointer;
  uint64_t EncapNextRoute;
  uint64_t EncapsulationList;
  uint32_t TECount;
  uint32_t LSPVIFCount;
  uint32_t GRECount;
  uint32_t EncapTunnelCount;
  uint32_t ProtocolValue;
  mrib_addrtype ProtocolRPAddress;
  mrib_attrib_entry_pod NSFEntryAttributes;
  uint32_t InPDRetryList;
};

struct mrib_route_ole_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
  uint64_t Uptime;
  uint32_t OLECount;
  mrib_attrib_entry_pod EntryAttributes;
};

struct mrib_db_summ_pod {
  uint32_t GroupRanges;
  uint32_t GRoutes;
  uint32_t SGRoutes;
  uint32_t ForwardingInterfaceCount;
  uint32_t RouteInterfaceCount;
};

// ---- Clients -------------------------------------------------------------------------------------------

struct mrib_client_pod {
  uint32_t ClientConnectionID;
  uint32_t ClientID;
  uint32_t IsActive;
  uint32_t RegisteredTableCount;
  int32_t ClientType;
  int32_t ClientReadState;
  uint32_t ParentID;
  uint64_t ClientUptimeInSecs;
  char* ClientName;
  char* ClientInstanceID;
  uint32_t PurgeDelaySecs;
  uint32_t PurgeRemainSecs;
  uint32_t NSFCapable;
  pod_array<int32_t> NSFInterest;
  uint32_t ResyncTimeSecs;
  uint32_t NSFRestartTimeSecs;
  uint32_t NSFRecoveryTimeSecs;
};

// One node of a filter chain; the first node of a chain is the standing filter, the rest temporary diffs.
struct mrib_simple_filter_pod {
  mrib_attrib_entry_pod EntryAttributes;
  mrib_attrib_intrf_pod InterfaceAttributes;
  pod_array<mrib_group_rng_pod> IncludeGroups;
  pod_array<mrib_group_rng_pod> ExcludeGroups;
  pod_array<uint32_t> IncludeInterfaces;  // handle 0 means every interface
  pod_array<uint32_t> ExcludeInterfaces;
  mrib_simple_filter_pod* next;
};

struct mrib_filter_pod {
  uint32_t ClientConnectionID;
  mrib_simple_filter_pod* FilterInterest;
  mrib_simple_filter_pod* FilterOwned;
  char* ClientName;
  char* ClientInstanceID;
};

struct mrib_lib_intf_pod {
  uint32_t InterfaceHandle;
  uint32_t HeadLSMIdentifier;
  uint64_t MRIBAttributes;
  uint64_t InterfaceAttributesSet;
  uint64_t InterfaceAttributesModified;
  uint64_t ModifiedInterfaceListNext;
  uint32_t Type;
  uint32_t AMTGateway;
  uint16_t AMTPort;
  uint32_t UnderlyingInterface;
  uint32_t AMTInterface;
  uint32_t AMTSourceAddress;
  uint32_t AMTNexthop;
  uint16_t AMT_MTU;
  uint16_t AMT_TOS;
  uint16_t AMT_TTL;
};

struct mrib_lib_route_pod {
  uint32_t TableID;
  mrib_addrtype Source;
  mrib_addrtype Group;
  uint32_t GroupLength;
  uint64_t MRIBAttributes;
  uint64_t RouteAttributes;
  uint64_t RouteAttributesModified;
  mrib_addrtype RPFNeighbor;
  mrib_ctid_pod MDTCoreTreeIdentifier;
  uint32_t RPFTableID;
  uint32_t MDTInterface;
  uint32_t MDTTurnaroundEnabled;
  uint32_t MVPNAssociatedTableIDs[2];
  uint32_t MDTInterfaceHandle;
  uint32_t MDTPayload;
  uint32_t DecapsulationRPFIdentifier;
  uint32_t MDT_BGP_InterfaceHandle;
  uint32_t FallbackMasterLineCard;
  uint32_t vFallbackMasterLCInterfaceHandle;
  uint32_t RPFIdentifier;
  uint32_t ProtocolValue;
  mrib_addrtype ProtocolRPAddress;
  uint32_t UpdateInProgress;
  uint64_t ModifiedRouteListNext;
  uint64_t ModifiedInterfaceListHead;
  uint64_t ModifiedInterfaceListTail;
  pod_array<mrib_lib_intf_pod> InterfaceList;
};

// ---- NSF and statistics --------------------------------------------------------------------------------

struct mrib_nsf_pod {
  uint32_t IsMulticastNSF;
  uint32_t IsMulticastCOFONSF;
  uint32_t MulticastNSFTimeout;
  uint32_t MulticastNSFTimeLeft;
  uint32_t MRIBConnTimer;
  uint32_t MRIBConnTimeLeft;
  char* ClientInfo;
  uint16_t NsfOnCount;
  uint16_t NsfOffCount;
  uint32_t NsfLastEnabled;
  uint32_t NsfLastDisabled;
  uint32_t RespawnCount;
  uint64_t LastNSFOn;
  uint64_t LastNSFOff;
  uint32_t LastNSFOnSec;
  uint32_t LastNSFOffSec;
  uint64_t LastICDNotifSent;
  uint32_t LastICDNotifSentSec;
  uint64_t LastRemoteNSFOn;
  uint64_t LastRemoteNSFOff;
  uint64_t LastLabelMldpNSFOn;
  uint64_t LastLabelMldpNSFOff;
  uint64_t LastLabelTeNSFOn;
  uint64_t LastLabelte_NSFOff;
  uint64_t LastLabelPimNSFOn;
  uint64_t LastLabelPimNSFOff;
  uint64_t LastLabelPim6NSFOn;
  uint64_t LastLabelPim6_NSFOff;
  uint64_t LastLabelKVRNSFOn;
  uint64_t LastLabelKVR_NSFOff;
  uint32_t LastRemoteNSFOnSec;
  uint32_t LastRemoteNSFOffSec;
  uint32_t LastLabelMldpNSFOnSec;
  uint32_t LastLabelMldpNSFOffSec;
  uint32_t LastLabelTeNSFOnSec;
  uint32_t LastLabelte_NSFOffSec;
  uint32_t LastLabelPimNSFOnSec;
  uint32_t LastLabelPim_NSFOffSec;
  uint32_t LastLabelPim6NSFOnSec;
  uint32_t LastLabelPim6_NSFOffSec;
  uint32_t LastLabelKVRNSFOnSec;
  uint32_t LastLabelKVRNSFOffSec;
  uint32_t LmribNSFClients;
  uint32_t CurrLmribClients;
  uint32_t ConvLmribClients;
  uint32_t IsIPInNSF;
  uint32_t IsIPAssumedInNSF;
};

struct mrib_rc_ipc_pod {
  char* IPCName;
  uint32_t ItemsInRing;
  uint32_t ConsumerWaiting;
  uint32_t ProducerFlags;
  uint32_t NodeUpdates;
  uint32_t SharedMemoryOpenFailures;
  uint32_t SharedMemoryFstatFailures;
  uint32_t SharedMemorySizeFailures;
  uint32_t SharedMemoryMapFailures;
  uint32_t SharedMemoryHeaderFailures;
};

struct mrib_chkpt_table_stats {
  char* TableDescription;
  uint32_t TableName;
  uint32_t IsMirrored;
  pod_array<uint32_t> Statistics;
};

struct mrib_chkpt_stats {
  pod_array<mrib_chkpt_table_stats> CheckpointTables;
};

struct mrib_rpfid_spe_info {
  uint32_t addr;
  uint32_t rpf_id;
  uint32_t id_alloc;
  uint32_t tbl_id;
  uint32_t mdt_ifh;
  uint32_t ipv6_interest;
  uint32_t stale;
  uint32_t chkpt_obj_id;
  uint32_t dep_route_list_cnt;
  uint32_t dep_core_route_list_cnt;
  uint32_t dep_label_list_cnt;
  uint32_t in_pd_retry_list;
  char* Annotation;
};

struct mrib_rpfid_spe_summ_info {
  uint32_t rpfid_count;
  uint32_t id_alloc_count;
  uint32_t v6_interest_count;
  uint32_t stale_count;
  uint32_t null_dep_route_list_count;
  uint32_t null_dep_core_route_list_count;
  uint32_t null_dep_label_list_count;
  uint32_t in_pd_retry_list_count;
};

struct mrib_nsr_end_info {
  mrib_timespec event_tm;
  uint32_t idx;
  int32_t ClientType;
  uint32_t num_tbl_with_purged_attr;
  uint32_t num_e_with_purged_e_attr;
  uint32_t num_e_with_purged_if_attr;
  uint32_t num_if_with_purged_if_attr;
};

struct mrib_cc_sg_pod {
  uint32_t Table_Id;
  mrib_addrtype RouteGroupAddress;
  mrib_addrtype RouteSourceAddress;
  char* Data;
};

struct mrib_cc_rt_sum_pod {
  uint32_t NodeID;
  uint32_t PfxScanned;
  uint32_t PfxConsistent;
  pod_array<mrib_cc_sg_pod> SGList;
};

struct mrib_cc_rt_pod {
  pod_array<mrib_cc_rt_sum_pod> RTSummary;
};

// ---- MVPN tables, TLC and route collapse ---------------------------------------------------------------

struct mrib_attr_stat_pod {
  uint32_t AddRcvdCount;
  uint32_t DelRcvdCount;
  uint32_t AddRedistCount;
  uint32_t DelRedistCount;
};

struct mrib_table_info_pod {
  uint32_t TableID;
  char* TableName;
  char* RegisteredClient;
  uint32_t TableMDTNameGRE;
  uint32_t TableGRETurnaround;
  uint32_t TableMDTNameMLDP;
  uint32_t TableMLDPTurnaround;
  uint32_t TableMDTNameP2MPTE;
  uint32_t TableP2MPTETurnaround;
  uint32_t TableMDTNameIR;
  uint32_t TableIRTurnaround;
  uint32_t TableMDTNameTreeSID;
  uint32_t TableTreeSIDTurnaround;
  uint32_t TableMLCFallbackFapID;
  uint32_t TableVirtualMLCFallbackFapID;
  mrib_ctid_pod TableMDTAddress;
  mrib_addrtype MDTSource;
  mrib_attr_stat_pod MTStat;
  mrib_attr_stat_pod MAStat;
};

struct mrib_label_table_info_pod {
  uint32_t TableID;
  char* TableName;
  char* RegisteredClient;
};

// A line-card node of the TLC and route-collapse databases.
struct mrib_mdt_node_pod {
  uint32_t Fapid;
  uint32_t ReferenceCount1;
  uint32_t ReferenceCount2;
  uint32_t ReferenceCount3;
  uint32_t IsMLCFallback;
  uint32_t IsRemote;
  uint32_t IsNSFRemote;
  uint32_t IsRemoteEncap;
};

struct mrib_tlc_mdt_pod {
  mrib_ctid_pod MDTCoreTreeIdentifier;
  uint32_t MDTTableID;
  uint32_t MDTRemoteTableID;
  uint32_t RemoteLCTableID;
  uint32_t RemoteMasterLCFapid;
  pod_array<mrib_mdt_node_pod> RemoteLCNodeList;
};

struct mrib_tlc_pod {
  uint32_t TLCTableID;
  char* TLCTableName;
  uint32_t MLCFapid;
  uint32_t vFallbackMasterLCInterfaceHandle;
  pod_array<mrib_mdt_node_pod> NodeList;
  pod_array<mrib_tlc_mdt_pod> MDTList;
};

// A route collapsed onto an MDT.
struct mrib_rc_routedb_pod {
  uint32_t RCTableID;
  mrib_addrtype RCSourceAddress;
  mrib_addrtype RCGroupAddress;
  uint16_t RCGroupPrefixLength;
};

struct mrib_rc_eole_db_pod {
  uint32_t RCEncapsulationIdentifier;
};

struct mrib_rc_mdt_pod {
  mrib_ctid_pod RC_MDTAddress;
  uint32_t RC_MDTTableID;
  uint32_t RC_MDTRemoteTableID;
  uint32_t RC_TLCTableID;
  uint32_t RCRemoteTLCTableID;
  pod_array<mrib_rc_routedb_pod> CustomerList;
  pod_array<mrib_rc_eole_db_pod> EncapOLEList;
  pod_array<mrib_rc_routedb_pod> CoreList;
  pod_array<mrib_mdt_node_pod> CoreEgressList;
};

// ---- IIR and MDT interface-handle databases ------------------------------------------------------------

struct mrib_iir_sub_node_pod {
  uint32_t SubInterface;
  char* SubInterfaceName;
  uint64_t SubInterfacePointer;
  uint64_t SubInterfaceNameNextPointer;
  uint32_t ReferenceCount;
};

struct mrib_iir_route_pod {
  uint32_t IIRRouteTableID;
  mrib_addrtype IIRSourceAddress;
  mrib_addrtype IIRGroupAddress;
  uint16_t IIRGroupPrefixLength;
  uint32_t VirtualInterfaceCount;
  pod_array<uint32_t> VirtualInterfaceList;
  uint32_t VirtualInterface;
  uint32_t ChildInterface;
  uint32_t AMT;
  uint64_t EntryPointer;
};

struct mrib_iir_label_pod {
  uint32_t Label;
  uint32_t VirtualInterface;
  uint32_t RecursiveOutgoinfInfo;
  uint64_t EntryPointer;
};

struct mrib_iir_intf_pod {
  uint32_t IIRInterface;
  char* IIRInterfaceName;
  uint32_t IsVirtualInterface;
  uint32_t IsIIRNotifiedInterface;
  uint32_t IsDeleteInProgress;
  uint32_t ChildCount;
  pod_array<mrib_iir_route_pod> RouteList;
  pod_array<mrib_iir_label_pod> PrimaryLabelList;
  pod_array<mrib_iir_label_pod> BackupLabelList;
  pod_array<mrib_iir_sub_node_pod> ParentList;
  pod_array<mrib_iir_sub_node_pod> ChildList;
  uint32_t InterfaceCharacter;
  uint32_t InterfaceType;
  uint32_t ParentInterfaceType;
  char* IfName;
  uint32_t InterfaceULIndex;
  uint64_t NHLabelOleHead;
  uint32_t NHLabelOlecount;
  uint64_t NHLabelRecursiveOleHead;
  uint32_t NHLabelRecursiveOlecount;
  uint64_t NHBackupLabelOleHead;
  uint32_t NHBackupLabelOlecount;
  uint64_t NHBackupLabelRecursiveOleHead;
  uint32_t NHBackupLabelRecursiveOlecount;
  uint64_t IPRouteOleHead;
  uint32_t IPRouteOlecount;
  uint64_t IPRouteAMTOleHead;
  uint32_t IPRouteAMTOlecount;
  uint64_t ChildSubInterfaceNameHeadPointer;
  uint64_t EntryPointer;
  uint32_t RehashThreshold;
};

struct mrib_mdt_routedb_pod {
  mrib_addrtype MDTRouteSourceAddress;
  mrib_addrtype MDTRouteGroupAddress;
  uint16_t MDTRouteGroupPrefixLength;
  uint32_t MDTRouteTableID;
  uint32_t MDTRemoteReprograming;
};

struct mrib_mdt_ifh_pod {
  uint32_t MDTInterface;
  uint32_t MDTInterfaceTableID;
  uint32_t MHReferenceCount;
  uint32_t IntranetReferenceCount;
  uint32_t ExtranetReferenceCount;
  uint64_t MDTUpTime;
  pod_array<mrib_mdt_routedb_pod> MDTRouteDB;
};

// ---- BVI databases -------------------------------------------------------------------------------------

struct mrib_bvi_mroute_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
};

struct mrib_bvi_route_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
  uint32_t BVIIfhandle;
  uint8_t BVIPlatformDataLength;
  uint8_t BVIPlatformData[16];
  pod_array<mrib_bvi_mroute_pod> MRoute;
  char* TableName;
  uint64_t Uptime;
  uint32_t RefCount;
};

struct mrib_bvi_interface_pod {
  uint32_t BVI_Name;
  uint32_t Table_Id;
  char* TableName;
};

struct mrib_bvi_route_summ_pod {
  uint64_t RxMrouteAdd;
  uint64_t RxMrouteDel;
  uint64_t RxMrouteUnk;
  uint64_t RxBulkStart;
  uint64_t RxBulkEnd;
  uint64_t RxMarkStale;
  uint64_t RxEod;
  uint64_t RxNfnUnk;
  uint64_t l2fibConnect;
  uint64_t moveBVIDBfromdflt2vrf;
  uint64_t moveBVIDBfromvrf2dflt;
  uint64_t move1BVIDB;
  uint64_t moveBVIDBVrfToVrf;
  uint64_t insertBVIDBEn;
  uint64_t deleteBVIDBEn;
  uint64_t expDelBVIDBEn;
  uint64_t IparmAddDbMove;
  uint64_t mrteAddNoMapUseDfltTbl;
  uint64_t mrteAddNoVrfTblUseDflt;
  uint64_t mrteAddNoDfltTbl;
  uint64_t MoveBviDbNoTable;
  uint64_t mrouteAddPrgmBviIfErr;
  uint64_t mrouteDelPrgmBVIIfErr;
  uint64_t moveBVIIfErr;
  uint64_t move1BVIEnErr;
  uint64_t BVIUpdMoveBVIDBErr;
  uint64_t IMIPAddrNfnMoveBVIDBErr;
  uint64_t l2fibConnectErr;
  uint64_t l2fibDisconnect;
  uint64_t BviIntfMdfErr;
  uint64_t BviIntfMdfErr1;
  uint64_t BviIntfMdfErr2;
  uint64_t BviIntfMdfErr3;
  uint64_t IparmAddErr;
  uint64_t StgSgUpdNoFloodEntry;
  uint64_t BviOleDelMissingL2Fib;
  uint64_t BviIfInsertNoMem;
  uint64_t BviIfInsertNoMribEn;
  uint64_t IfcInsert0Dup;
  uint64_t BviIfInsertOnOldTree;
  uint64_t BviIfCantDelOldTree;
  uint64_t IfcInsertFailer;
  uint64_t IfcDelBadParam;
  uint64_t IfcDelNoBviEn;
  uint64_t IfcDelFailed;
  uint64_t MoveInterfaceNoOle;
  uint64_t IfcNodeLinkNoL3Ole;
  uint64_t IfcNodeLinkNoBviIfData;
  uint64_t IfcNodeLinkNoBviEnpt;
  uint64_t BviInsDelFail;
  uint64_t L2fibSgStarGNoL3Ole;
  uint64_t L2UpdNotLinked;
  uint64_t L2UpdXcBviEntry;
  uint64_t DelBviEntryFailed;
  uint64_t BviIfDanglingOleDel;
  uint64_t BviIfDanglingOleDelNot;
  uint64_t BviLsmNodeAddFail;
  uint64_t BviLsmNodeDelNotFound;
  uint64_t BviLsmNodeDelFail;
};

// ---- Registration and TE databases ---------------------------------------------------------------------

struct mrib_nh_path_pod {
  char* MRIBNHString;
  uint32_t OutIntf;
  uint32_t PrimCount;
  uint32_t BackupCount;
};

struct mrib_regdb_pod {
  int32_t RegistrationType;  // 2 IP, 6 label
  uint32_t NHAddr;
  uint32_t Label;
  uint32_t RegdbIpLeafCount;
  uint32_t RegdbLblLeafCount;
  uint32_t RegdbMlclLeafCount;
  uint32_t RegIsECDStale;
  uint32_t RegIsECDReg;
  uint32_t PDActiveRestriction;
  uint32_t PDBackupRestriction;
  uint64_t ECDInfoPointer;
  uint16_t ECDLen;
  uint64_t IPOleHeadPointer;
  uint64_t LabelOleHeadPointer;
  uint64_t MlcOleHeadPointer;
  uint32_t NotificationCount;
  char* DestVrfName;
  char* notified_ts;
  pod_array<mrib_nh_path_pod> PathList;
};

struct mrib_ole_pod {
  uint32_t Label;
  uint32_t OleNH;
};

struct mrib_tedb_lsp_pod {
  uint32_t LocalLabel;
  uint32_t TeBindDone;
  uint32_t PrimOutIntf;
  uint32_t PrimNH;
  uint32_t PrimOutLabel;
  uint32_t BackupIntf;
  uint32_t BackupOutIntf;
  uint32_t BkupNH;
  uint32_t MPLabel;
  uint32_t BkupTunLabel;
};

struct mrib_tedb_pod {
  uint32_t TunnelIDCtx;
  uint32_t TunnelIFh;
  uint32_t LSPCount;
  pod_array<mrib_tedb_lsp_pod> LSPList;
  uint32_t OleCount;
  uint64_t OleHeadPointer;
  uint32_t NotificationCount;
  char* notified_ts;
  pod_array<mrib_ole_pod> OLEList;
};

struct mrib_mpls_bkup_tun_pod {
  uint32_t ProtectedInterface;
  uint32_t BackupTunnel;
  uint32_t BackupOutIntf;
  uint32_t BackupLabel;
  uint32_t BackupActive;
  pod_array<uint32_t> InLabels;
};

struct mrib_mpls_bkup_pod {
  uint32_t TE_Client;
  uint32_t LMRIB_Entry;
  char* ProtIfName;
  pod_array<mrib_mpls_bkup_tun_pod> BackupTunnels;
};

// ---- Encap-ID, gateway-ID, EVPN and LSM databases ------------------------------------------------------

// One entry of an encapsulation ID's redistribution history.
struct mrib_encapid_redist_pod {
  uint8_t redist_flags;
  uint32_t client_id;  // 0xFFFFFFFF: unused entry
  uint64_t client_redist_time;
};

struct mrib_encapid_ole_pod {
  uint32_t TYPE;
  pod_array<uint8_t> OleKey;
};

struct mrib_encapid_node_pod {
  uint32_t NodeID;
  uint32_t Refcount;
};

struct mrib_encapid_tblid_pod {
  uint32_t ETableID;
  uint32_t Refcount;
};

struct mrib_encapid_pod {
  pod_array<uint8_t> EncapIDKey;
  uint32_t EncapID;
  mrib_encapid_redist_pod RedistInfo[3];
  uint64_t ExpirationTime;
  uint32_t ExpirationValid;
  uint32_t VrfLite;
  uint32_t V6VrfLite;
  uint32_t Stale;
  uint32_t IPV6Usage;
  uint32_t RouteCount;
  char* Annotation;
  uint64_t EncapsulationNode;
  uint64_t DependencyRouteList;
  uint64_t DependencyLabelList;
  pod_array<mrib_encapid_ole_pod> EncapIdOle;
  pod_array<mrib_encapid_node_pod> NodeIDList;
  pod_array<mrib_encapid_node_pod> BackupNodeIDList;
  pod_array<mrib_encapid_tblid_pod> EncapTIdList;
  uint32_t InPDRetryList;
  uint32_t IsLabelEncap;
  uint32_t IsWTXCommunicationFailed;
};

struct mrib_encapid_summary {
  uint32_t eid_count;
  uint32_t vrflite_count;
  uint32_t v6vrflite_count;
  uint32_t v6usage_count;
  uint32_t stale_count;
  uint32_t pd_retry_count;
  uint32_t sby_chkpt_pulse_sent;
  uint32_t sby_chkpt_pulse_received;
};

struct mrib_gw_id_pod {
  uint32_t ID;
  uint64_t in_bytes;
  uint64_t out_bytes;
  uint64_t in_pkts;
  uint64_t out_pkts;
};

// One entry of an EVPN bucket's update history.
struct mrib_evpn_bkt_info_pod {
  uint64_t redist_flags;
  uint32_t client_id;  // 0xFFFFFFFF ends the used entries; 0 is EVPN itself
  mrib_timespec client_redist_time;
};

struct mrib_evpn_bkt_pod {
  uint32_t BucketID;
  uint32_t Interface;
  int32_t State;  // -1 unknown, 0 blocked, 1 forward
  uint8_t Flags;
  uint64_t Uptime;
  mrib_evpn_bkt_info_pod Info[16];
};

struct mrib_mpls_db_pod {
  uint32_t CTIDType;
  uint32_t SourcePEAddress;
  uint32_t MTEInterface;
  uint32_t EncapCount;
  pod_array<uint32_t> EncapIdentifiers;
};

// ---- AMT -----------------------------------------------------------------------------------------------

struct mrib_amt_intrf_pod {
  uint32_t Interface;
  uint32_t UnderlyingInterface;
  uint32_t UnderlyingInterfaceNode;
  mrib_attrib_intrf_pod InterfaceAttributes;
  uint64_t Uptime;
  uint64_t Expiry;
  uint32_t Type;
  uint32_t AMTPort;
  uint32_t AMTNexthop;
  uint16_t AMT_MTU;
  uint8_t AMT_TOS;
  uint8_t AMT_TTL;
  uint32_t AMTGateway;
  uint32_t AMTSource;
  uint32_t AMTId;
  uint64_t OutPkts;
  uint64_t OutBytes;
};

struct mrib_amt_route_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
  pod_array<mrib_amt_intrf_pod> AMT_Interfaces;
  uint32_t AMTIFCount;
};

struct mrib_amt_gw_id_ex_pod {
  uint32_t AMTId;
  uint64_t JoinTime;
  uint64_t ExpireTime;
  uint64_t OutPkts;
  uint64_t OutBytes;
};

struct mrib_amt_route_ex_pod {
  mrib_addrtype Source;
  mrib_addrtype Group;
  uint32_t GWAddress;
  uint32_t GWPort;
  pod_array<mrib_amt_gw_id_ex_pod> GW_IDs;
  uint32_t GWIDCount;
};

struct mrib_amt_route_summary_pod {
  mrib_addrtype Source;
  mrib_group_rng_pod GroupRange;
  uint32_t AMTGatewayCount;
  uint64_t ActivePacketsSent;
  uint64_t ActiveBytesSent;
  uint64_t ExPacketsSent;
  uint64_t ExBytesSent;
};

struct mrib_amt_gw_active_route_pod {
  mrib_addrtype Source;
  mrib_addrtype Group;
  uint32_t AMTId;
  uint64_t JoinTime;
  uint64_t OutPkts;
  uint64_t OutBytes;
};

struct mrib_amt_gw_pod {
  uint32_t GW_Addr;
  uint32_t GW_Port;
  pod_array<mrib_amt_gw_active_route_pod> ActiveRoutes;
};

struct mrib_amt_gw_ex_route_pod {
  mrib_addrtype Source;
  mrib_addrtype Group;
  uint32_t AMTId;
  uint64_t JoinTime;
  uint64_t ExpireTime;
  uint64_t OutPkts;
  uint64_t OutBytes;
};

struct mrib_amt_gw_ex_pod {
  uint32_t GW_Addr;
  uint32_t GW_Port;
  pod_array<mrib_amt_gw_ex_route_pod> ExpiredRoutes;
};

struct mrib_amt_gw_summary_pod {
  uint32_t GW_Addr;
  uint32_t GW_Port;
  uint32_t ActiveRouteCount;
  uint64_t OutPkts;
  uint64_t OutBytes;
  uint64_t OutExPkts;
  uint64_t OutExBytes;
};
