// ValidacaoFichaCadastral: the registration-form file validator (lines of 260 characters).
#ifndef QUORVVALIDA_VALIDACAO_FICHA_CADASTRAL_HPP_
#define QUORVVALIDA_VALIDACAO_FICHA_CADASTRAL_HPP_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "quorvvalida/exportacao.h"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/relogio.hpp"

namespace quorv {

namespace fichas {
class ExecucaoFichas;
}

// Checks one registration-form file per call and writes every problem found as a line of
// ADVERTENCIAS.TXT in the working directory. A run that reaches the trailer ends with status 8
// even on a clean file: callers judge a run by whether ADVERTENCIAS.TXT exists afterwards.
// One object runs one file at a time. No member throws.
class QUORVVALIDA_API ValidacaoFichaCadastral {
 public:
  ValidacaoFichaCadastral();
  ~ValidacaoFichaCadastral();
  ValidacaoFichaCadastral(const ValidacaoFichaCadastral&) = delete;
  ValidacaoFichaCadastral& operator=(const ValidacaoFichaCadastral&) = delete;

  // Remittance number of the last header read (header columns 61-66).
  std::string sNumeroRemessaRef;
  // Request type of the last TR 100 (column 22).
  std::string sTipo_Solicitacao;
  // Request number of the last TR 100 (columns 12-21).
  std::string sNro_Solicitacao;
  // Billing order; set to 1 at each TR 100 and TR 110.
  int16_t iOrdem_Faturamento = 0;
  // Booklet order used by the record checks.
  int16_t iOrdem_Talao = 0;
  // Start-of-activity date of the request's TR 110 (columns 42-49).
  std::string Dt_Inicio_Atividade;
  // End-of-activity date of the request's TR 110 (columns 50-57).
  std::string Dt_Fim_Atividade;
  // Request counter of the record checks; 0 at the start of each run.
  int32_t contSolicitacao = 0;
  // Registration counter of the record checks; 0 at the start of each run.
  int32_t contInscricao = 0;
  // True when the last run met an unexpected failure inside a check (status 9).
  bool bTem_Erro_Grave = false;

  // Validates the file and returns the run status: 8 at the trailer or at a structural error,
  // 9 when the working directory or a file is unusable or a check failed unexpectedly.
  // nNumeroRemessa receives the header's remittance number.
  int16_t Valida_Fichas(const std::string& sArquivoRemessa, std::string& nNumeroRemessa,
                        const std::string& sDiretorioTrabalho, double nChaveRemessa = 0,
                        double nChaveProcessamento = 0, const std::string& sOrigemChamada = "",
                        const std::string& sNomeServidor = "",
                        const std::string& sCaracterSeparador = "#");

  // Why the last Valida_Fichas could not start or could not finish its output: Nenhuma when it
  // did, and before any call. A warning that could not be written leaves the status as the run
  // found it and is told here (EscritaAdvertencias); a status 9 with bTem_Erro_Grave is told as
  // ErroGrave (a record type that is not a number) or FalhaInterna.
  Falha UltimaFalha() const;

  // Closes the run's files and, when the run wrote no warning, deletes ADVERTENCIAS.TXT from the
  // directory given (even one left by an earlier run); safe to call more than once. Always
  // answers false.
  bool Procedimentos_Finais_Fichas(const std::string& sDIRETORIOORDADV);

  // Writes one warning line for the line being examined, numbered from its columns 1-8;
  // false when the line could not be written.
  bool Gravar_Erro_Ficha(int32_t lCodErro);

  // As above, numbered dLINHA instead when dLINHA is not 0.
  bool Gravar_Erro_Ficha(int32_t lCodErro, const double& dLINHA);

  // Writes one warning line against the last TR 110 line this object read.
  bool Gravar_Erro_FichaTR110(int32_t lCodErro);

  // As above, numbered dLINHA instead when dLINHA is not 0.
  bool Gravar_Erro_FichaTR110(int32_t lCodErro, const double& dLINHA);

  // Raised on the caller's thread before each line is read, with the share of the file done.
  std::function<void(double& dPorcentagem)> FichaProgress;

  // Today's date for the date checks; the machine's local date when empty.
  Relogio Hoje;

 private:
  std::unique_ptr<fichas::ExecucaoFichas> execucao_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_VALIDACAO_FICHA_CADASTRAL_HPP_
