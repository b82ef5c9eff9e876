// Windows-1252, the code page of the files, against the UTF-8 of the library's texts.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_CP1252_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_CP1252_HPP_

#include <string>
#include <string_view>

namespace quorv::cp1252 {

// The UTF-8 text of single-byte Windows-1252 text.
std::string ParaUtf8(std::string_view texto);

// The Windows-1252 text of UTF-8 text; a character the code page lacks, or a byte that is not
// UTF-8, becomes "?".
std::string DeUtf8(std::string_view texto);

// The number of characters of a UTF-8 text.
std::size_t Caracteres(std::string_view texto);

}  // namespace quorv::cp1252

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_CP1252_HPP_
