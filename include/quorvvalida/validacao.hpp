// Validacao: the producer-invoice file validator (lines of 160 characters).
#ifndef QUORVVALIDA_VALIDACAO_HPP_
#define QUORVVALIDA_VALIDACAO_HPP_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "quorvvalida/exportacao.h"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/relogio.hpp"

namespace quorv {

namespace notas {
class ExecucaoNotas;
}

// Checks one producer-invoice file per call and writes every problem found as a line of
// ADVERTENCIAS.TXT in the working directory. One object runs one file at a time; objects on
// different threads need different working directories. No member throws.
class QUORVVALIDA_API Validacao {
 public:
  Validacao();
  ~Validacao();
  Validacao(const Validacao&) = delete;
  Validacao& operator=(const Validacao&) = delete;

  // Validates the file and returns the run status: 0 clean, 1 warnings recorded with the whole
  // file read, 8 structural error (run stopped at that line), 9 working directory missing or a
  // file that could not be opened. nNumeroRemessa receives header columns 60-65 once the header
  // is accepted. Origin "A0" only counts the records of the groups.
  int16_t Valida_Dados(const std::string& sArquivoRemessa, std::string& nNumeroRemessa,
                       const std::string& sDiretorioTrabalho, double nChaveRemessa = 0,
                       double nChaveProcessamento = 0, const std::string& sOrigemChamada = "",
                       const std::string& sNomeServidor = "",
                       const std::string& sCaracterSeparador = "#");

  // Why the last Valida_Dados could not start or could not finish its output: Nenhuma when it
  // did, and before any call. A warning that could not be written leaves the status as the run
  // found it and is told here (EscritaAdvertencias).
  Falha UltimaFalha() const;

  // Writes one warning line for the line being examined, numbered from its columns 1-8;
  // false when the line could not be written (for example outside a run).
  bool Gravar_Erro(int32_t lCodErro);

  // As above, numbered dLINHA instead when dLINHA is not 0.
  bool Gravar_Erro(int32_t lCodErro, const double& dLINHA);

  // Raised on the caller's thread while the file is read, with the share read so far.
  std::function<void(double& dPorcentagem)> Progress;

  // Today's date for the date checks; the machine's local date when empty.
  Relogio Hoje;

 private:
  std::unique_ptr<notas::ExecucaoNotas> execucao_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_VALIDACAO_HPP_
