// The producer invoice (TR 10).
#include "invoices/verificacoes.hpp"

namespace quorv::notas {

bool VerificaTR10(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

}  // namespace quorv::notas
