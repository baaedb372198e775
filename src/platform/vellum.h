// The state store `vellum`: bind a handle to a directory of the hierarchical store, list the items below a
// directory in batches, fetch one item, and list the names below a path. The program only reads the store.
#pragma once

#include <cstdint>

#include "platform/status.h"

// A connection to one directory of the store. Paths given with a handle are relative to that directory.
typedef struct vellum_handle_s* vellum_handle_t;
// One batch of items with their data; what it hands out belongs to it (see vellum_datalist_next()).
typedef struct vellum_datalist_s* vellum_datalist_t;
// The names below one path; it belongs to the handle that made it and lives until that handle is unbound.
typedef struct vellum_list_s* vellum_list_t;

// The data type of an item that holds a pod record.
inline constexpr uint32_t kVellumDataTypePod = 7;

// Binds `*handle` to the absolute directory `path` (with or without a closing "/"). The directory need not
// hold anything yet. `flags` must be 0.
[[nodiscard]] cerr_t vellum_bind(vellum_handle_t* handle, const char* path, uint32_t flags);

// Releases a bound handle and every list made with it.
[[nodiscard]] cerr_t vellum_unbind(vellum_handle_t handle);

// Lists the items directly below `directory` (relative to the handle; with or without a closing "/"), in
// byte order of their names, starting after `resume_key` (empty for the first batch; a bare name or a path,
// of which only the last element counts). `*count` gives the most items wanted and comes back with the
// number in the batch. A directory that exists but holds nothing gives an empty batch; one that does not
// exist fails with the not-found code. On success `*list` must be released with vellum_datalist_free().
// `flags` must be 0.
[[nodiscard]] cerr_t vellum_datalist(vellum_handle_t handle, const char* directory, const char* resume_key,
                                     uint32_t* count, vellum_datalist_t* list, uint32_t flags);

// Hands out the next item of the batch: its absolute path, data type and data. `*flags` receives the item's
// store flags (none are defined off the router: always 0). Past the last item it fails with the not-found
// code. What it hands out is owned by the list: the path until vellum_datalist_free(), the data until the
// next call of this function or vellum_datalist_free(), whichever comes first.
[[nodiscard]] cerr_t vellum_datalist_next(vellum_datalist_t list, const char** item_path, uint32_t* data_type,
                                          const void** data, uint32_t* data_length, uint32_t* flags);

// Sets `*more` to 1 when items follow the batch in the directory, else 0.
[[nodiscard]] cerr_t vellum_datalist_get_more_flag(vellum_datalist_t list, uint32_t* more);

// Releases a batch and everything it handed out. An empty batch is released the same way.
[[nodiscard]] cerr_t vellum_datalist_free(vellum_datalist_t list);

// Fetches one item by its path relative to the handle (a listed path or an alias). On success `*data` is a
// block from malloc() that the caller releases with free(); on failure it is none unless the store returned
// data along with the failure, which the caller releases likewise. `*data_type` receives the item's type.
// `flags` must be 0.
[[nodiscard]] cerr_t vellum_item_get(vellum_handle_t handle, const char* item_path, uint32_t* data_type,
                                     void** data, uint32_t* data_length, uint32_t flags);

// Lists the names directly below `path` (relative to the handle; "" for the bound directory itself) that
// sort after `start_after` ("" for all), at most `*count` of them (-1 for every one); `*count` comes back
// with the number listed. Subdirectories end in "/". A path that does not exist, or holds nothing, gives no
// list and the not-found code.
[[nodiscard]] cerr_t vellum_list(vellum_handle_t handle, const char* path, const char* start_after,
                                 int32_t* count, vellum_list_t* list);

// Hands out the next name of the list, or none when the list is exhausted. The name is owned by the list.
[[nodiscard]] cerr_t vellum_list_next(vellum_list_t list, const char** name);
