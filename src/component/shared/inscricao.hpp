// The state-registration check, answered by an external library or by a host's function.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_

#include <memory>
#include <string_view>

namespace quorv::inscricao {

// Who answers the check: the external library or a host's function.
struct Verificador;

// The checker in force now; empty when there is none. A run takes it once, at its start, and asks
// it for every registration of the file.
std::shared_ptr<const Verificador> Atual();

// True when the checker accepts the single-byte registration number for the UF; false when it
// refuses it or when there is no checker.
bool Valida(const Verificador* verificador, std::string_view inscricao, std::string_view uf);

// The same with the checker in force now.
bool Valida(std::string_view inscricao, std::string_view uf);

}  // namespace quorv::inscricao

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_INSCRICAO_HPP_
