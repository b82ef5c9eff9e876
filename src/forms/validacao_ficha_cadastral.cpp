// ValidacaoFichaCadastral as the host sees it: the public entry points over the object's run.
#include "quorvvalida/validacao_ficha_cadastral.hpp"

#include "forms/execucao_fichas.hpp"

namespace quorv {

ValidacaoFichaCadastral::ValidacaoFichaCadastral()
    : execucao_(std::make_unique<fichas::ExecucaoFichas>()) {}
ValidacaoFichaCadastral::~ValidacaoFichaCadastral() = default;

int16_t ValidacaoFichaCadastral::Valida_Fichas(const std::string& sArquivoRemessa,
                                               std::string& nNumeroRemessa,
                                               const std::string& sDiretorioTrabalho,
                                               double nChaveRemessa, double nChaveProcessamento,
                                               const std::string& sOrigemChamada,
                                               const std::string& sNomeServidor,
                                               const std::string& sCaracterSeparador) {
  try {
    const fichas::ArgumentosFichas argumentos{
        sArquivoRemessa, sDiretorioTrabalho, nChaveRemessa,     nChaveProcessamento,
        sOrigemChamada,  sNomeServidor,      sCaracterSeparador};
    return execucao_->Executa(*this, argumentos, nNumeroRemessa);
  } catch (...) {
    // Nothing leaves the method: a failure outside the reading (memory) ends the run as one that
    // could not be made.
    bTem_Erro_Grave = true;
    execucao_->DefineFalha(Falha::FalhaInterna);
    return 9;
  }
}

Falha ValidacaoFichaCadastral::UltimaFalha() const {
  return execucao_->UltimaFalha();
}

bool ValidacaoFichaCadastral::Procedimentos_Finais_Fichas(const std::string& sDIRETORIOORDADV) {
  try {
    return execucao_->Procedimentos_Finais_Fichas(sDIRETORIOORDADV);
  } catch (...) {
    return false;
  }
}

bool ValidacaoFichaCadastral::Gravar_Erro_Ficha(int32_t lCodErro) {
  return Gravar_Erro_Ficha(lCodErro, 0);
}

bool ValidacaoFichaCadastral::Gravar_Erro_Ficha(int32_t lCodErro, const double& dLINHA) {
  try {
    return execucao_->Gravar_Erro_Ficha(lCodErro, dLINHA);
  } catch (...) {
    return false;
  }
}

bool ValidacaoFichaCadastral::Gravar_Erro_FichaTR110(int32_t lCodErro) {
  return Gravar_Erro_FichaTR110(lCodErro, 0);
}

bool ValidacaoFichaCadastral::Gravar_Erro_FichaTR110(int32_t lCodErro, const double& dLINHA) {
  try {
    return execucao_->Gravar_Erro_FichaTR110(lCodErro, dLINHA);
  } catch (...) {
    return false;
  }
}

}  // namespace quorv
