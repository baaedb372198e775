// Type definitions that more than one schema of a group carries. A sub-type must read the same in every
// schema that defines it, so each is written once here and the .def rows concatenate the ones they need.
#pragma once

// MRIB group.

#define OSTREL_T_mrib_addr_bytes "$59=16x%s;"
#define OSTREL_T_mrib_addrtype "$60=?(<AFName,mrib_afi_>,0:{IPV4Address}N,1:{IPV6Address}$59);"
#define OSTREL_T_mrib_encapid_redist_pod "$64={redist_flags}C{client_id}D{client_redist_time}H;"
#define OSTREL_T_mrib_evpn_bkt_info_pod "$65={redist_flags}H{client_id}D{client_redist_time}$66;"
#define OSTREL_T_mrib_timespec "$66={Seconds}D{Nanoseconds}D;"
#define OSTREL_T_mrib_ctid_pod "$69={TYPE}[ostrel_ctid_type_]e{ID}N;"
#define OSTREL_T_mrib_attrib_entry_pod                                                                      \
  "$70={IsDomainLocalSource}b{IsSourceExternal}b{IsSignalByDefaultOn}b{IsDirectlyConnectedCheckSet}b"       \
  "{IsInheritAcceptSet}b{IsInheritFromSet}b{IsDrop}b{IsRPFNeighborPresent}b{IsMulticastNSFOn}b"             \
  "{IsMDTEncapsulationOn}b{IsMDTDecapsulationOn}b{IsMDTInterfaceOn}b{IsMDT_BGPInterfaceOn}b{IsMasterLCOn}b" \
  "{IsMasterLCFallbackOn}b{IsMDTAddressOn}b{IsPlatformModified}b{IsThresholdCrossed}b{IsConditionalDecap}b" \
  "{IsViaLSM}b{IsForwardMPLS}b{IsExtranet}b{IsMDTInterfaceSpecialOn}b{EncapsulationIdentifierFlag}b"        \
  "{RPFIdentifierFlag}b{CandidateMOFRR}b{MOFRRState}b{MOFRRPrimary}b{MOFRRBackup}b{Protocol}b{AMT}b"        \
  "{InitialConvergenceDone}b{VXLAN}b;"
#define OSTREL_T_mrib_attrib_intrf_pod                                                                      \
  "$71={IsForward}b{IsAccept}b{IsAcceptBackup}b{IsInternalCopy}b{IsNegateSignal}b{IsDontPreserve}b"         \
  "{IsSignalPresent}b{IsInternalInterest}b{IsInternalDisinterest}b{IsLocalInterest}b{IsLocalDisinterest}b"  \
  "{IsDecapsulationInterface}b{IsUnderlyingPhysicalChange}b{IsEncapsulationInterface}b{IsEgressInterface}b" \
  "{IsExtranet}b{IsMDTInterface}b{IsMLDP_MDTInterface}b{IsRSVP_TE_MDTInterface}b{IsIR_MDTInterface}b"       \
  "{IsMDTDataTriggered}b{IsMDTDataUsed}b{IsP2MPInterface}b{IsTurnAround}b{AMT}b{IsTR_MDTInterface}b"        \
  "{EVPN_MH_Interface}b;"
#define OSTREL_T_mrib_intrf_pod                                                                              \
  "$72={Interface}D%h{UnderlyingInterface}D%h{UnderlyingInterfaceNode}D%n{InterfaceAttributes}$71{Uptime}H"  \
  "{liAddRedistCount}I{liDelRedistCount}I{ifMdfAttr}$71{BackupFgidAdded}b{InterfacePointer}PH"               \
  "{NextEncapsulationPointer}PH{HeadLSMIdentifier}D{GREEncapsulationSourceAddress}N"                         \
  "{GREEncapsulationGroupAddress}N{Type}D{AMTPort}D{AMTNexthop}N{AMT_MTU}I{AMT_TOS}C{AMT_TTL}C{AMTGateway}N" \
  "{AMTSource}N{AMTId}D{RegDBPointer}PH{NextRegDBole}PH{PreviousRegDBOle}PH{NSFInterfaceAttributes}P$71"     \
  "{EVPN_MH_Annot}s{PreviousVirutalInterfacePointer}PH{NextVirutalInterfacePointer}PH"                       \
  "{PreviousPhysicalInterfacePointer}PH{NextPhysicalInterfacePointer}PH{Linked_IF_TyepPointer}PH;"
#define OSTREL_T_mrib_group_rng_pod "$73={GroupPrefix}$60{GroupPrefixLength}D;"
#define OSTREL_T_mrib_out_intrf_stat_pod                                                                  \
  "$74={InterfaceHandle}D%h{BitsSOutRate}H{PacketsOutRate}H{HardwareEgressPacketsOut}H"                   \
  "{HardwareEgressBytesOut}H{HardwareEgressPacketsDrop}H{IsHardwareEgressOutputCounterValidOnInterface}b" \
  "{IsHardwareEgressDropCounterValidOnInterface}b;"
#define OSTREL_T_mrib_incoming_rate_pod \
  "$75={NodeID}D%n{PacketsInRate}H{BitsInRate}H{HardwareIngressFwd}H{HardwareIngressDrop}H;"
#define OSTREL_T_mrib_outgoing_rate_pod                                                     \
  "$76={NodeID}D%n{PacketsOutRate}H{BitsOutRate}H{HardwareEgressFwd}H{HardwareEgressDrop}H" \
  "{InterfaceStats}a($74);"
#define OSTREL_T_mrib_amt_intrf_pod                                                                         \
  "$79={Interface}D%h{UnderlyingInterface}D%h{UnderlyingInterfaceNode}D%n{InterfaceAttributes}$71{Uptime}H" \
  "{Expiry}H{Type}D{AMTPort}D{AMTNexthop}N{AMT_MTU}I{AMT_TOS}C{AMT_TTL}C{AMTGateway}N{AMTSource}N{AMTId}D"  \
  "{OutPkts}H{OutBytes}H;"
#define OSTREL_T_mrib_amt_gw_id_ex_pod "$81={AMTId}D{JoinTime}H{ExpireTime}H{OutPkts}H{OutBytes}H;"
#define OSTREL_T_mrib_amt_gw_active_route_pod \
  "$84={Source}$60{Group}$60{AMTId}D{JoinTime}H{OutPkts}H{OutBytes}H;"
#define OSTREL_T_mrib_amt_gw_ex_route_pod \
  "$86={Source}$60{Group}$60{AMTId}D{JoinTime}H{ExpireTime}H{OutPkts}H{OutBytes}H;"
#define OSTREL_T_mrib_bvi_intrf_pod "$90={Interface}D%h{BVIIfhandle}D%h{IsForward}b{Uptime}H;"
#define OSTREL_T_mrib_bvi_mroute_pod "$91={Source}$60{GroupRange}$73;"
#define OSTREL_T_mrib_simple_filter_pod                                                         \
  "$96=L{EntryAttributes}$70{InterfaceAttributes}$71{IncludeGroups}a($73){ExcludeGroups}a($73)" \
  "{IncludeInterfaces}a(D%h){ExcludeInterfaces}a(D%h){next}p($96);"
#define OSTREL_T_mrib_iir_sub_node_pod                                                              \
  "$100={SubInterface}D%h{SubInterfaceName}s{SubInterfacePointer}PH{SubInterfaceNameNextPointer}PH" \
  "{ReferenceCount}D;"
#define OSTREL_T_mrib_iir_route_pod                                                                    \
  "$101={IIRRouteTableID}D{IIRSourceAddress}$60{IIRGroupAddress}$60{IIRGroupPrefixLength}I"            \
  "{VirtualInterfaceCount}D{VirtualInterfaceList}a(D%h){VirtualInterface}D%h{ChildInterface}D%h{AMT}b" \
  "{EntryPointer}PH;"
#define OSTREL_T_mrib_iir_label_pod \
  "$102={Label}D{VirtualInterface}D%h{RecursiveOutgoinfInfo}b{EntryPointer}PH;"
#define OSTREL_T_mrib_attr_stat_pod "$105={AddRcvdCount}D{DelRcvdCount}D{AddRedistCount}D{DelRedistCount}D;"
#define OSTREL_T_mrib_prim_tos_node_pod \
  "$108={TunnelInterface}D%h{OutInterface}D%h{NextHop}N{OutLabel}D{IsActive}b{NodePointer}PH;"
#define OSTREL_T_mrib_backup_tos_node_pod                                                   \
  "$109={BackupTunnelInterface}D%h{BackupOutInterface}D%h{BackupNextHop}N{BackupOutLabel}D" \
  "{MergePointLabel}D{IsActive}b{NodePointer}PH;"
#define OSTREL_T_mrib_mpls_outinfos_pod \
  "$110={OutInterface}D%h{OutLabel}D{NextHop}N{PrimaryTunnel}$108{BackupTunnels}a($109);"
#define OSTREL_T_mrib_mpls_frr_ob_infos_pod \
  "$113={ProtectedInterface}D%h{BackupTunnel}D%h{BackupLabel}D{BackupNextHop}N{IsActive}b;"
#define OSTREL_T_mrib_mpls_bkup_tun_pod                                                          \
  "$116={ProtectedInterface}D%h{BackupTunnel}D%h{BackupOutIntf}D%h{BackupLabel}D{BackupActive}b" \
  "{InLabels}a(D);"
#define OSTREL_T_mrib_mdt_node_pod                                                                 \
  "$118={Fapid}D{ReferenceCount1}D{ReferenceCount2}D{ReferenceCount3}D{IsMLCFallback}b{IsRemote}b" \
  "{IsNSFRemote}b{IsRemoteEncap}b;"
#define OSTREL_T_mrib_tlc_mdt_pod                                                                           \
  "$119={MDTCoreTreeIdentifier}$69{MDTTableID}D{MDTRemoteTableID}D{RemoteLCTableID}D{RemoteMasterLCFapid}D" \
  "{RemoteLCNodeList}a($118);"
#define OSTREL_T_mrib_rc_routedb_pod \
  "$121={RCTableID}D{RCSourceAddress}$60{RCGroupAddress}$60{RCGroupPrefixLength}I;"
#define OSTREL_T_mrib_rc_eole_db_pod "$122={RCEncapsulationIdentifier}D;"
#define OSTREL_T_mrib_cc_sg_pod "$124={Table_Id}D{RouteGroupAddress}$60{RouteSourceAddress}$60{Data}s;"
#define OSTREL_T_mrib_cc_rt_sum_pod "$125={NodeID}D%n{PfxScanned}D{PfxConsistent}D{SGList}a($124);"
#define OSTREL_T_mrib_mdt_routedb_pod                                                                      \
  "$128={MDTRouteSourceAddress}$60{MDTRouteGroupAddress}$60{MDTRouteGroupPrefixLength}I{MDTRouteTableID}D" \
  "{MDTRemoteReprograming}b;"
#define OSTREL_T_mrib_lib_intf_pod                                                           \
  "$130={InterfaceHandle}D%h{HeadLSMIdentifier}D{MRIBAttributes}H{InterfaceAttributesSet}H"  \
  "{InterfaceAttributesModified}H{ModifiedInterfaceListNext}H{Type}D{AMTGateway}N{AMTPort}I" \
  "{UnderlyingInterface}D%h{AMTInterface}D%h{AMTSourceAddress}N{AMTNexthop}N{AMT_MTU}I{AMT_TOS}I{AMT_TTL}I;"
#define OSTREL_T_mrib_encapid_ole_pod "$132={TYPE}D{OleKey}a(C);"
#define OSTREL_T_mrib_encapid_node_pod "$133={NodeID}D%n{Refcount}D;"
#define OSTREL_T_mrib_encapid_tblid_pod "$134={ETableID}D{Refcount}D;"
#define OSTREL_T_mrib_chkpt_table_stats "$138={TableDescription}s{TableName}D{IsMirrored}b{Statistics}a(D);"
#define OSTREL_T_mrib_nh_path_pod "$144={MRIBNHString}32s{OutIntf}D%h{PrimCount}D{BackupCount}D;"
#define OSTREL_T_mrib_ole_pod "$146={Label}D{OleNH}N;"
#define OSTREL_T_mrib_tedb_lsp_pod                                                                           \
  "$147={LocalLabel}D{TeBindDone}b{PrimOutIntf}D%h{PrimNH}N{PrimOutLabel}D{BackupIntf}D%h{BackupOutIntf}D%h" \
  "{BkupNH}N{MPLabel}D{BkupTunLabel}D;"
#define OSTREL_T_mrib_fapid_pod "$151={FAP_ID}32x%S;"

// MFWD group.

#define OSTREL_T_mfwd_addr_bytes "$46=16x%s;"
#define OSTREL_T_mfwd_addrtype "$47=?(<AFName,mfwd_afi_>,0:{IPV4Address}N,1:{IPV6Address}$46);"
#define OSTREL_T_ipv4_mfwd_attrib_entry_pod                                                                 \
  "$48={IsDomainLocalSource}b{IsSourceExternal}b{IsSignalByDefaultOn}b{IsDirectlyConnectedCheckSet}b"       \
  "{IsInheritAcceptSet}b{IsInheritFromSet}b{IsDrop}b{IsRPFNeighborPresent}b{IsMulticastNSFOn}b"             \
  "{IsUnicastNSFOn}b{IsMDTEncapsulationOn}b{IsMDTDecapsulationOn}b{IsMDTAddressOn}b{IsThresholdCrossed}b"   \
  "{IsMDTHandleSet}b{IsConditionalDecap}b{IsPunt}b{IsSegmentedMDTEncap}b{IsExtranet}b{IsRPFIdentifierSet}b" \
  "{IsEncapsulationIdentifierSet}b{IsMOFRRActive}b{IsMOFRRPrimary}b{IsMOFRRBackup}b{IsAMT}b{IsVXLAN}b;"
#define OSTREL_T_ipv4_mfwd_attrib_intf_pod                                                                  \
  "$49={IsForward}b{IsAccept}b{IsAcceptBackup}b{IsInternalCopy}b{IsNegateSignal}b{IsDontPreserve}b"         \
  "{IsSignalPresent}b{IsInternalInterest}b{IsInternalDisinterest}b{IsLocalInterest}b{IsLocalDisinterest}b"  \
  "{IsDecapsulationInterface}b{IsUnderlyingPhysicalChange}b{IsEncapsulationInterface}b{IsEgressInterface}b" \
  "{IsMDTInterface}b{IsMLDP_MDTInterface}b{IsRSVP_TE_MDTInterface}b{IsIR_MDTInterface}b"                    \
  "{IsMDTDataTriggered}b{IsP2MPInterface}b{IsTurnAround}b{AMT}b;"
#define OSTREL_T_ipv4_mfwd_intrf_pod                                                                        \
  "$50={Interface}D%h{UnderlyingInterface}D%h{UnderlyingInterfaceNode}D%n{InterfaceAttributes}$49{Uptime}H" \
  "{IsStale}b{Type}D{AMTPort}D{AMTNexthop}N{AMT_MTU}I{AMT_TOS}C{AMT_TTL}C{AMTGateway}N{AMTSource}N{AMTId}D" \
  "{HeadLSMIdentifier}D{InterfacePointer}PH;"
#define OSTREL_T_mfwd_group_rng "$51={GroupPrefix}$47{GroupPrefixLength}D;"
#define OSTREL_T_mfwd_mdt_addr \
  "$52=?(<IDType,ipv4_mfwd_show_id_type_>,1:{IPv4MDTAddress}N,0:{MDTNumber}D,2:{IPv6MDTAddress}N,3:v);"
#define OSTREL_T_mfwd_ctid "$53=?(<MIBType,ipv4_mfwd_show_ctid_type_>,1:{IPv4CTID}N,0:{AnyCTID}D,3:v);"
#define OSTREL_T_ipv4_mfwd_ctid_pod "$54={MIBType}[ipv4_mfwd_show_ctid_type_]e{ID}D{CTID}$53;"
#define OSTREL_T_ipmc_err_flags_pod                                                             \
  "$55={IsEncapError}b{IsDecapError}b{IsRPFError}b{IsTTLError}b{IsNoMemory}b{IsHardwareError}b" \
  "{IsPlatformError}b;"
#define OSTREL_T_ipv4_mfwd_intrf_stat_pod                                                  \
  "$56={Interface}D%h{PacketsOut}H{BytesOut}H{PacketsDropped}H{HardwareEgressPacketsOut}H" \
  "{HardwareEgressBytesOut}H{IsHardwareCounterValid}b;"
#define OSTREL_T_ipv4_mfwd_svd_pending_pod "$60={TableID}D{TableName}s{PendingCount}D{QueuedTime}H;"
#define OSTREL_T_ipv4_mfwd_intf_pod                                                                 \
  "$61={Interface}D%h{InterfaceName}s{TableID}D{IsMulticastEnabled}b{IsMulticastAdjacencyPresent}b" \
  "{IsUnderlyingPhysicalChange}b{MulticastTTLThreshold}D{RefCount}D{RouteCount}D{Type}D"            \
  "{UnderlyingInterface}D%h{UnderlyingInterfaceNode}D%n{LastUpdateTime}H;"
#define OSTREL_T_ipv4_mfwd_tunnel_intf_pod \
  "$62={Interface}D%h{TunnelSource}N{TunnelDestination}N{TunnelMode}D{IsMDT}b{MDTGroup}N{RefCount}D;"
#define OSTREL_T_ipv4_mfwd_bundle_member_pod \
  "$63={MemberInterface}D%h{MemberNode}D%n{IsActive}b{UnderlyingInterface}D%h;"
#define OSTREL_T_ipv4_mfwd_counter_pod "$70={CounterName}32s{CounterValue}H;"
#define OSTREL_T_ipv4_mfwd_regdb_lsm_pod "$80={LSMID}D{Interface}D%h{IsHead}b;"
#define OSTREL_T_ipv4_mfwd_regdb_te_pod "$81={TunnelIDCtx}D{TunnelInterface}D%h{Label}D;"
#define OSTREL_T_ipv4_mfwd_regdb_gre_pod "$82={GRESource}N{GREDestination}N{TableID}D;"
#define OSTREL_T_ipv4_mfwd_regdb_timofrr_pod "$83={PrimaryInterface}D%h{BackupInterface}D%h{IsActive}b;"
#define OSTREL_T_ipv4_mfwd_regdb_nh_pod "$84={NHAddr}N{Interface}D%h{TableID}D;"
#define OSTREL_T_ipv4_mfwd_regdb_mofrr_prot_pod "$85={ProtectedInterface}D%h{Nexthop}N{Label}D;"
#define OSTREL_T_ipv4_mfwd_encap_gre_pod "$87={Source}N{Destination}N{TableID}D{MDTInterface}D%h;"
#define OSTREL_T_ipv4_mfwd_encap_timofrr_pod "$88={PrimaryInterface}D%h{BackupInterface}D%h{Label}D;"
#define OSTREL_T_ipv4_mfwd_encap_nh_pod "$89={NHAddr}N{Interface}D%h;"
#define OSTREL_T_ipv4_mfwd_encap_mofrr_prot_pod "$90={ProtectedInterface}D%h{Nexthop}N;"
#define OSTREL_T_ipv4_mfwd_encapleaf_pod                                                                 \
  "$91={LeafType}[ipv4_mfwd_encap_leaf_type_]e{Leaf}?(<LeafType,ipv4_mfwd_encap_leaf_type_>,1:{LSMID}D," \
  "2:{NH}$89,3:{TETunnel}D%h,4:{GRE}$87,5:{TIMOFRR}$88,6:{MOFRRProtection}$90){RefCount}D;"
#define OSTREL_T_mfwd_bvi_intrf_pod "$96={Interface}D%h{BVIIfhandle}D%h{IsForward}b{Uptime}H;"
#define OSTREL_T_mfwd_bvi_mroute_pod "$97={Source}$47{GroupRange}$51;"
