// The IIR interface view, -b: the interfaces that take part in IIR, with their parents, children and the
// routes that use them; -z names one interface. Under -P also their label lists and outgoing-list heads.
#pragma once

#include "front/show_args.h"

void ostrel_iir_intf_view(const ShowArgs& args);
