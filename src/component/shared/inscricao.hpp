// The state-registration check, answered by an external library or by a host's function.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_

#include <string_view>

namespace quorv::inscricao {

// True when the checker accepts the single-byte registration number for the UF; false when it
// refuses it or when there is no checker.
bool Valida(std::string_view inscricao, std::string_view uf);

}  // namespace quorv::inscricao

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_
