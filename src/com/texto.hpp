// Texts across the automation boundary: hosts hand UTF-16 BSTRs, the library speaks UTF-8.
#ifndef QUORVVALIDA_SRC_COM_TEXTO_HPP_
#define QUORVVALIDA_SRC_COM_TEXTO_HPP_

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace quorv::com {

// The UTF-8 of a BSTR (a null BSTR is the empty text). An unpaired surrogate becomes U+FFFD.
std::string Utf8(BSTR texto);

// The UTF-8 of a wide text.
std::string Utf8(const std::wstring& texto);

// The UTF-16 of a UTF-8 text.
std::wstring Largo(const std::string& texto);

// A new BSTR holding the UTF-8 text; null when memory ran out.
BSTR NovoBstr(const std::string& texto);

// Replaces the BSTR behind a ByRef parameter by the UTF-8 text, freeing the old one. Leaves it
// untouched when it already holds that text, so a caller's variable keeps its own string.
void Substitui(BSTR* destino, const std::string& texto);

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_TEXTO_HPP_
