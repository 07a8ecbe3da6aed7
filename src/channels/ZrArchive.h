#pragma once
// The abstract archive: a named file that values read themselves from and write themselves to.

#include <string>

#include "core/ErrorDefinition.h"

namespace quillon {

/// Keeps the file name and the open mode; the concrete archive decides the text format.
class ZrArchive {
 public:
  static constexpr const char* kDefaultFileName = "quillon.arc";

  /// An empty name selects the default file name.
  explicit ZrArchive(std::string fileName = {}, bool readOnly = true);
  virtual ~ZrArchive();
  ZrArchive(const ZrArchive&) = delete;
  ZrArchive& operator=(const ZrArchive&) = delete;

  /// Binds the archive to its file: for reading in read-only mode, else for writing.
  virtual ErrorCode Open() = 0;
  /// Ends the binding; in write mode the file is written out.
  virtual ErrorCode Close() = 0;

 protected:
  std::string fileName;
  bool readOnly;
};

}  // namespace quillon
