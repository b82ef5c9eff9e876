// The texts of the registration-form warning codes, for the library's own readers and reports.
#ifndef QUORVVALIDA_SRC_FORMS_MESSAGES_CATALOGO_FICHAS_HPP_
#define QUORVVALIDA_SRC_FORMS_MESSAGES_CATALOGO_FICHAS_HPP_

#include <string_view>

namespace quorv::fichas {

// The UTF-8 text of a form warning code from 1 to 129; empty for any other code.
std::string_view TextoAdvertencia(int codigo);

}  // namespace quorv::fichas

#endif  // QUORVVALIDA_SRC_FORMS_MESSAGES_CATALOGO_FICHAS_HPP_
