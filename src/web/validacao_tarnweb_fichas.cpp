// ValidacaoTarnWEB: the registration-form entry point and the choice by document type.
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "web/retorno.hpp"

namespace quorv {

bool ValidacaoTarnWEB::Valida_Dados_Ficha_Cadastral(const std::string& sFilePath,
                                                    const std::string& sFileRetorno,
                                                    const std::string& sDirTrabalho,
                                                    std::string& nNumeroRemessa) {
  falha_ = Falha::Nenhuma;
  try {
    // The return file is written over whatever its path names: the file being validated, or
    // the warnings file it is made from, would be lost.
    if (web::RetornoColide(sFilePath, sDirTrabalho, sFileRetorno)) {
      falha_ = Falha::RetornoEhEntrada;
      return false;
    }
    ValidacaoFichaCadastral validacao;
    validacao.Hoje = Hoje;
    // A return file ("RET") is validated in full. A remessa ("REM") sent without a calling
    // program is the web system's own: the server name "TARNWEB" keeps the request structure
    // rules and skips the field checks. ProgramaChamador is never passed on, on purpose.
    const bool retorno = tipoArquivo_ == "RET";
    const std::string origem = retorno ? "RET" : "REM";
    const std::string servidor = !retorno && programaChamador_.empty() ? "TARNWEB" : "";
    const int16_t status = validacao.Valida_Fichas(sFilePath, nNumeroRemessa, sDirTrabalho, 0, 0,
                                                   origem, servidor, "#");
    falha_ = validacao.UltimaFalha();
    if (status == 0) return true;
    // A form run ends with 8 even on a clean file, so only a warnings file tells; a run that
    // failed without leaving one (a missing file: 9) answers true all the same. Deliberate.
    return web::Conclui(web::TipoRetorno::kFichas, sDirTrabalho, sFileRetorno, nNumeroRemessa,
                        falha_);
  } catch (...) {
    falha_ = Falha::FalhaInterna;
    return false;
  }
}

bool ValidacaoTarnWEB::Valida_TIPO(const std::string& sFilePath, const std::string& sFileRetorno,
                                   const std::string& sDirTrabalho, std::string& nNumeroRemessa,
                                   const std::string& sTipoDoc) {
  // The document type is compared exactly: "p" or " P" is no type at all.
  falha_ = Falha::Nenhuma;
  if (sTipoDoc == "P") {
    return Valida_Dados_Tarnweb(sFilePath, sFileRetorno, sDirTrabalho, nNumeroRemessa);
  }
  if (sTipoDoc == "F") {
    return Valida_Dados_Ficha_Cadastral(sFilePath, sFileRetorno, sDirTrabalho, nNumeroRemessa);
  }
  return false;
}

}  // namespace quorv
