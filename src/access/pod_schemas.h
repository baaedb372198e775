// The full schema string of every record type, the single source of its descriptor, layout and decoded
// structure. The rows live in the two .def lists, in registration order.
#pragma once

namespace ostrel::schema {

#define OSTREL_POD(name, text) inline constexpr char name[] = text;
#include "access/pod_schemas_mrib.def"
#include "access/pod_schemas_mfwd.def"
#undef OSTREL_POD

}  // namespace ostrel::schema
