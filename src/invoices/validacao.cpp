// Validacao as the host sees it: the public entry points over the object's run.
#include "quorvvalida/validacao.hpp"

#include "invoices/execucao_notas.hpp"

namespace quorv {

Validacao::Validacao() : execucao_(std::make_unique<notas::ExecucaoNotas>()) {}
Validacao::~Validacao() = default;

int16_t Validacao::Valida_Dados(const std::string& sArquivoRemessa, std::string& nNumeroRemessa,
                                const std::string& sDiretorioTrabalho, double nChaveRemessa,
                                double nChaveProcessamento, const std::string& sOrigemChamada,
                                const std::string& sNomeServidor,
                                const std::string& sCaracterSeparador) {
  try {
    const notas::ArgumentosNotas argumentos{sArquivoRemessa,     sDiretorioTrabalho, nChaveRemessa,
                                            nChaveProcessamento, sOrigemChamada,     sNomeServidor,
                                            sCaracterSeparador};
    return execucao_->Executa(argumentos, nNumeroRemessa, Progress, Hoje);
  } catch (...) {
    // Nothing leaves the method: a failure that escapes the run (memory, a host's event that
    // throws) ends it as a file that could not be validated.
    execucao_->DefineFalha(Falha::FalhaInterna);
    return 9;
  }
}

Falha Validacao::UltimaFalha() const {
  return execucao_->UltimaFalha();
}

bool Validacao::Gravar_Erro(int32_t lCodErro) {
  return Gravar_Erro(lCodErro, 0);
}

bool Validacao::Gravar_Erro(int32_t lCodErro, const double& dLINHA) {
  try {
    return execucao_->Grava(lCodErro, dLINHA);
  } catch (...) {
    return false;
  }
}

}  // namespace quorv
