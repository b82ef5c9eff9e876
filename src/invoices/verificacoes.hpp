// The record checks of the invoice run. Each takes the record (the current 160-character line)
// and answers false when it recorded a warning; the header and trailer checks answer a status
// instead (0 accepted, 1 refused: the run stops with 8, 9: the run stops with 9).
#ifndef QUORVVALIDA_SRC_INVOICES_VERIFICACOES_HPP_
#define QUORVVALIDA_SRC_INVOICES_VERIFICACOES_HPP_

#include <cstdint>
#include <string_view>

#include "invoices/execucao_notas.hpp"

namespace quorv::notas {

// Records the warnings of one record check and remembers whether any was written.
class Ocorrencias {
 public:
  explicit Ocorrencias(ExecucaoNotas& execucao) : execucao_(execucao) {}
  // Records the code against the record's own line.
  void Falha(int32_t codigo) {
    execucao_.Grava(codigo);
    falhou_ = true;
  }
  // The answer of a record check: true when nothing was recorded.
  bool Aceito() const { return !falhou_; }
  // The answer of a header or trailer check: 1 when something was recorded.
  int16_t Status() const { return falhou_ ? 1 : 0; }

 private:
  ExecucaoNotas& execucao_;
  bool falhou_ = false;
};

// Header (TR 00): what the record checks take from it, and its checks by layout version.
DadosCabecalho LeCabecalho(int versao, std::string_view registro);
int16_t VerificaCabecalhoV1(ExecucaoNotas& execucao, std::string_view registro);
int16_t VerificaCabecalhoV2(ExecucaoNotas& execucao, std::string_view registro,
                            std::string_view linha);

// Group opening (TR 01) and closing (TR 98).
bool VerificaTR01(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR98(ExecucaoNotas& execucao, std::string_view registro);

// Detail records of a group.
bool VerificaTR10(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR15(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR20(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR25(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR30(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR35(ExecucaoNotas& execucao, std::string_view registro);
bool VerificaTR40(ExecucaoNotas& execucao, std::string_view registro);

// The end of a TR 10, TR 20 or TR 30 block, when the next block or the group's end begins.
bool FechaBlocoTR10(ExecucaoNotas& execucao);
bool FechaBlocoTR20(ExecucaoNotas& execucao);
bool FechaBlocoTR30(ExecucaoNotas& execucao);

// File trailer (TR 99) by the header's layout version.
int16_t VerificaTrailerV1(ExecucaoNotas& execucao, std::string_view cabecalho,
                          std::string_view registro);
int16_t VerificaTrailerV2(ExecucaoNotas& execucao, std::string_view cabecalho,
                          std::string_view registro);

}  // namespace quorv::notas

#endif  // QUORVVALIDA_SRC_INVOICES_VERIFICACOES_HPP_
