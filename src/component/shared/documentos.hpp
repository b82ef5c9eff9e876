// Check digits of the taxpayer numbers: CNPJ for companies, CPF for persons. Single-byte text.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_DOCUMENTOS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_DOCUMENTOS_HPP_

#include <string_view>

namespace quorv::documentos {

// A CNPJ, bare or punctuated, whose 14 digits carry correct check digits.
bool ValidaCNPJ(std::string_view texto);

// A CPF of at most 11 characters whose 11 digits carry correct check digits.
bool ValidaCPF(std::string_view texto);

// The check digits of a 14-digit CNPJ; an empty or blank text passes.
bool ConfereDigitosCNPJ(std::string_view texto);

// The check digits of an 11-digit CPF; an empty or blank text passes.
bool ConfereDigitosCPF(std::string_view texto);

}  // namespace quorv::documentos

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_DOCUMENTOS_HPP_
