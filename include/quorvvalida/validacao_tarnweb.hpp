// ValidacaoTarnWEB: the treasury web system's entry points.
#ifndef QUORVVALIDA_VALIDACAO_TARNWEB_HPP_
#define QUORVVALIDA_VALIDACAO_TARNWEB_HPP_

#include <cstdint>
#include <string>

#include "quorvvalida/exportacao.h"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/relogio.hpp"

namespace quorv {

// Runs a validator with the web system's fixed arguments and, when warnings were found, turns
// ADVERTENCIAS.TXT into a return file for a person to read (Windows-1252, CR LF) and deletes it.
// The validating methods answer true when no warnings file was left. No member throws.
class QUORVVALIDA_API ValidacaoTarnWEB {
 public:
  // Validates a producer-invoice file; the return file is sDirTrabalho + sFileRetorno.
  bool Valida_Dados_Tarnweb(const std::string& sFilePath, const std::string& sFileRetorno,
                            const std::string& sDirTrabalho, std::string& nNumeroRemessa);
  // Piece piSub (from 1) of the text cut at blanks into lines of at most piMaxLen characters.
  std::string BreakString(const std::string& psTexto, int16_t piSub, int16_t piMaxLen) const;
  // "P" validates invoices, "F" forms (exact, case-sensitive); anything else answers false.
  bool Valida_TIPO(const std::string& sFilePath, const std::string& sFileRetorno,
                   const std::string& sDirTrabalho, std::string& nNumeroRemessa,
                   const std::string& sTipoDoc);
  // Validates a registration-form file; the return file is sDirTrabalho + sFileRetorno.
  bool Valida_Dados_Ficha_Cadastral(const std::string& sFilePath, const std::string& sFileRetorno,
                                    const std::string& sDirTrabalho, std::string& nNumeroRemessa);
  // Kind of form file ("RET" or other), stored trimmed and upper-cased.
  void TipoArquivo(const std::string& valor);
  // Calling program, stored trimmed and upper-cased.
  void ProgramaChamador(const std::string& valor);

  // Why the last validating call could not start or could not finish its output: the
  // validator's own failure (a missing file, a warnings file that could not be written...), else
  // RetornoNaoCriado or EscritaRetorno for the return file, or RetornoEhEntrada when the return
  // file would have been the file to validate or the warnings file (nothing was validated then).
  // Nenhuma when all went well, and before any call. The answer of the call stays as it is.
  Falha UltimaFalha() const { return falha_; }

  // Today's date handed to the validators; the machine's local date when empty.
  Relogio Hoje;

 private:
  std::string tipoArquivo_;
  std::string programaChamador_;
  Falha falha_ = Falha::Nenhuma;
};

}  // namespace quorv

#endif  // QUORVVALIDA_VALIDACAO_TARNWEB_HPP_
