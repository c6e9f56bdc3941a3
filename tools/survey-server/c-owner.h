#pragma once

#include <libsoup/soup.h>

#include <memory>

// RAII owners of resources that C libraries return.

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template<typename T>
using GObjectPtr = std::unique_ptr<T, GObjectUnref>;

struct GErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};
using GErrorPtr = std::unique_ptr<GError, GErrorFree>;

struct GBytesUnref {
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
using GBytesPtr = std::unique_ptr<GBytes, GBytesUnref>;

struct GStringFree {
  void operator()(char* text) const { g_free(text); }
};
using GText = std::unique_ptr<char, GStringFree>;

struct SoupMultipartFree {
  void operator()(SoupMultipart* multipart) const { soup_multipart_free(multipart); }
};
using SoupMultipartPtr = std::unique_ptr<SoupMultipart, SoupMultipartFree>;

struct SoupParamListFree {
  void operator()(GHashTable* parameters) const { soup_header_free_param_list(parameters); }
};
using SoupParamList = std::unique_ptr<GHashTable, SoupParamListFree>;
