// The texts of the invoice warning codes, for the library's own readers and reports.
#ifndef QUORVVALIDA_SRC_INVOICES_MESSAGES_CATALOGO_NOTAS_HPP_
#define QUORVVALIDA_SRC_INVOICES_MESSAGES_CATALOGO_NOTAS_HPP_

#include <string_view>

namespace quorv::notas {

// The UTF-8 text of an invoice warning code; "Erro não cadastrado" for a code without one.
std::string_view TextoAdvertencia(int codigo);

}  // namespace quorv::notas

#endif  // QUORVVALIDA_SRC_INVOICES_MESSAGES_CATALOGO_NOTAS_HPP_
