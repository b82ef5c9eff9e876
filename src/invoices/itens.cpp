// The item records of a block (TR 15 under a TR 10, TR 25 under a TR 20, TR 35 under a TR 30),
// the TR 30 record, and the end of each block.
#include "invoices/verificacoes.hpp"

namespace quorv::notas {

// The layouts of TR 15, 25, 30 and 35 are not published: their records are accepted as they
// come, and their item totals and item sequences are not compared.
bool VerificaTR15(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

bool VerificaTR25(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

bool VerificaTR30(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

bool VerificaTR35(ExecucaoNotas& execucao, std::string_view registro) {
  static_cast<void>(execucao);
  static_cast<void>(registro);
  return true;
}

bool FechaBlocoTR10(ExecucaoNotas& execucao) {
  static_cast<void>(execucao);
  return true;
}

bool FechaBlocoTR20(ExecucaoNotas& execucao) {
  static_cast<void>(execucao);
  return true;
}

bool FechaBlocoTR30(ExecucaoNotas& execucao) {
  static_cast<void>(execucao);
  return true;
}

}  // namespace quorv::notas
