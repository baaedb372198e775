// The simulated platform's error codes and their texts, as cerr_strerror() gives them. Codes below 0x10000
// are the operating system's error numbers and take its texts.
#pragma once

#include <cstdint>

#include "platform/status.h"

namespace ostrel::sim {

// State store.
inline constexpr cerr_t kStoreNotFound = 0x40818600;   // no such item or directory
inline constexpr cerr_t kStoreUnavailable = 0x40818700;  // the store file cannot be opened or read
inline constexpr cerr_t kStoreNotBound = 0x40818800;     // a handle that was never bound
inline constexpr cerr_t kStoreBadPath = 0x40818900;      // a path that is not absolute or too long
inline constexpr cerr_t kLibraryMissing = 0x8081c200;     // the store's client library is not readable

// Record codec.
inline constexpr cerr_t kPodWrongType = 0x40a00100;
inline constexpr cerr_t kPodTruncated = 0x40a00200;
inline constexpr cerr_t kPodCorrupt = 0x40a00300;
inline constexpr cerr_t kPodArrayCount = 0x40a00400;
inline constexpr cerr_t kPodTextTooLong = 0x40a00500;
inline constexpr cerr_t kPodNoMemory = 0x40a00600;
inline constexpr cerr_t kPodBadDescriptor = 0x40a00700;
inline constexpr cerr_t kPodSchemaMismatch = 0x40a00800;

// Other services.
inline constexpr cerr_t kNoMemory = 0x40b00100;          // a pool or list refused an allocation
inline constexpr cerr_t kUnknownIdentifier = 0x40b00200;  // an interface, node or processor not in inventory
inline constexpr cerr_t kNotConnected = 0x40b00300;       // the interface-name server is not bound
inline constexpr cerr_t kBadArgument = 0x40b00400;

// The code that an injected fault uses when its fixture names none.
inline constexpr cerr_t kInjectedFailure = 0x40b0ff00;

struct CerrText {
  cerr_t code;
  const char* text;
};

inline constexpr CerrText kCerrTexts[] = {
    {kStoreNotFound, "'vellum' detected the 'warning' condition 'The item or directory does not exist'"},
    {kStoreUnavailable, "'vellum' detected the 'fatal' condition 'The store cannot be opened or read'"},
    {kStoreNotBound, "'vellum' detected the 'error' condition 'The handle is not bound'"},
    {kStoreBadPath, "'vellum' detected the 'error' condition 'The path is invalid'"},
    {kLibraryMissing, "'vellum' detected the 'fatal' condition 'The client library is not available'"},
    {kPodWrongType, "'pod' detected the 'error' condition 'The record is of another type'"},
    {kPodTruncated, "'pod' detected the 'error' condition 'The record is truncated'"},
    {kPodCorrupt, "'pod' detected the 'error' condition 'The record is corrupt'"},
    {kPodArrayCount, "'pod' detected the 'error' condition 'An array count exceeds the record's data'"},
    {kPodTextTooLong, "'pod' detected the 'error' condition 'A text exceeds its length limit'"},
    {kPodNoMemory, "'pod' detected the 'resource not available' condition 'Out of memory'"},
    {kPodBadDescriptor, "'pod' detected the 'error' condition 'The descriptor's schema is invalid'"},
    {kPodSchemaMismatch, "'pod' detected the 'error' condition 'The record's schema differs from the descriptor's'"},
    {kNoMemory, "'platform' detected the 'resource not available' condition 'Out of memory'"},
    {kUnknownIdentifier, "'platform' detected the 'warning' condition 'No such identifier'"},
    {kNotConnected, "'platform' detected the 'error' condition 'Not connected to the server'"},
    {kBadArgument, "'platform' detected the 'error' condition 'Invalid argument'"},
    {kInjectedFailure, "'platform' detected the 'error' condition 'Injected failure'"},
};

}  // namespace ostrel::sim
