// FileUtility: splits a Windows path into drive, folders, name and extension.
#ifndef QUORVVALIDA_FILE_UTILITY_HPP_
#define QUORVVALIDA_FILE_UTILITY_HPP_

#include <string>

#include "quorvvalida/exportacao.h"

namespace quorv {

// Works on the text of a path only ("\" between folders, ":" after a drive letter, "\\" before a
// server); nothing is normalised. An error inside an operation leaves its result empty.
class QUORVVALIDA_API FileUtility {
 public:
  // "C:" of C:\dir\file.txt; "\\server" of \\server\share\file.txt; empty otherwise.
  std::string GetDrive(const std::string& sArquivoRemessa) const;
  // The file name without its extension; empty for a bare name without a dot.
  std::string GetFileName(const std::string& sArquivoRemessa) const;
  // The file name, with its extension when bWithExtension is true.
  std::string GetFileName(const std::string& sArquivoRemessa, const bool& bWithExtension) const;
  // The text after the last ".".
  std::string GetFileExtension(const std::string& sArquivoRemessa) const;
  // The folders without drive and outer backslashes.
  std::string GetPath(const std::string& sArquivoRemessa) const;
  // Everything before the last "\" when bWithDevice is true; else as above.
  std::string GetPath(const std::string& sArquivoRemessa, const bool& bWithDevice) const;
  // True when a directory listing of the path names an entry.
  bool FileExists(const std::string& sArquivoRemessa) const;
};

}  // namespace quorv

#endif  // QUORVVALIDA_FILE_UTILITY_HPP_
