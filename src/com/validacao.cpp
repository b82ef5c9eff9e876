// Validacao: the producer-invoice validator, with its Progress event.
#include <string>

#include "QuorvValida.h"
#include "classes.hpp"
#include "objeto.hpp"
#include "quorvvalida/validacao.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

// Progress's DISPID in __Validacao, as the type library declares it.
constexpr DISPID kProgress = 1;

class ValidacaoCom final : public AutomacaoComEventos<_Validacao> {
 public:
  ValidacaoCom() : AutomacaoComEventos(IID__Validacao, CLSID_Validacao, DIID___Validacao) {
    validacao_.Progress = Progresso(kProgress);
  }

  HRESULT STDMETHODCALLTYPE Valida_Dados(BSTR sArquivoRemessa, BSTR* nNumeroRemessa,
                                         BSTR sDiretorioTrabalho, double nChaveRemessa,
                                         double nChaveProcessamento, BSTR sOrigemChamada,
                                         BSTR sNomeServidor, BSTR sCaracterSeparador,
                                         short* resultado) override {
    return RodaValidador(emExecucao_, nNumeroRemessa, resultado, [&](std::string& numero) {
      return validacao_.Valida_Dados(Utf8(sArquivoRemessa), numero, Utf8(sDiretorioTrabalho),
                                     nChaveRemessa, nChaveProcessamento, Utf8(sOrigemChamada),
                                     Utf8(sNomeServidor), Utf8(sCaracterSeparador));
    });
  }

  HRESULT STDMETHODCALLTYPE Gravar_Erro(long lCodErro, double* dLINHA,
                                        VARIANT_BOOL* resultado) override {
    return Logico(resultado, [&] {
      return validacao_.Gravar_Erro(lCodErro, dLINHA == nullptr ? 0 : *dLINHA);
    });
  }

 private:
  quorv::Validacao validacao_;
  bool emExecucao_ = false;
};

}  // namespace

HRESULT CriaValidacao(REFIID iid, void** objeto) {
  return Cria<ValidacaoCom>(iid, objeto);
}

}  // namespace quorv::com
