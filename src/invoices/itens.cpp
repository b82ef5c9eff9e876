// The item records of a block (TR 15 under a TR 10, TR 25 under a TR 20, TR 35 under a TR 30),
// the TR 30 record, and the end of each block.
#include "invoices/verificacoes.hpp"

namespace quorv::notas {

// The layouts of TR 15, 25, 30 and 35 are not known: their records are accepted as they
// come, and their item totals and item sequences are not compared (no 143, 150, 152 or 175 to
// 177), nor are two TR 20 in a row told (144).
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

// A block closes when the next block or the group's end begins; the warning goes to that record,
// the line being examined. A block without an item of its own is the only fault a closing finds:
// the item totals are not compared, since the items' layouts are not known.
bool FechaBlocoTR10(ExecucaoNotas& execucao) {
  Ocorrencias ocorrencias(execucao);
  if (!execucao.BlocoTR10TemItens()) ocorrencias.Falha(142);
  return ocorrencias.Aceito();
}

bool FechaBlocoTR20(ExecucaoNotas& execucao) {
  Ocorrencias ocorrencias(execucao);
  if (!execucao.BlocoTR20TemItens()) ocorrencias.Falha(149);
  return ocorrencias.Aceito();
}

bool FechaBlocoTR30(ExecucaoNotas& execucao) {
  Ocorrencias ocorrencias(execucao);
  if (!execucao.BlocoTR30TemItens()) ocorrencias.Falha(151);
  return ocorrencias.Aceito();
}

}  // namespace quorv::notas
