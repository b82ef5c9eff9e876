// The tax assessment notice (TR 40).
#include "invoices/verificacoes.hpp"

namespace quorv::notas {

bool VerificaTR40(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

}  // namespace quorv::notas
