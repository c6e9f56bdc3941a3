#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <memory>

// Owners of the objects that libarchive allocates.

// Closes and frees a reader.
struct ArchiveReadFree {
  void operator()(archive* reader) const { archive_read_free(reader); }
};
using ArchiveReader = std::unique_ptr<archive, ArchiveReadFree>;

// Closes and frees a writer. Closing writes the end of the archive.
struct ArchiveWriteFree {
  void operator()(archive* writer) const { archive_write_free(writer); }
};
using ArchiveWriter = std::unique_ptr<archive, ArchiveWriteFree>;

// Frees an entry that is not part of a reader.
struct ArchiveEntryFree {
  void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using ArchiveEntry = std::unique_ptr<archive_entry, ArchiveEntryFree>;
