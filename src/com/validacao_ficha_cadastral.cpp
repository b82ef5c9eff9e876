// ValidacaoFichaCadastral: the registration-form validator, its ten public fields and its
// FichaProgress event.
#include <string>

#include "QuorvValida.h"
#include "classes.hpp"
#include "objeto.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

// FichaProgress's DISPID in __ValidacaoFichaCadastral, as the type library declares it.
constexpr DISPID kFichaProgress = 1;

class ValidacaoFichaCadastralCom final : public AutomacaoComEventos<_ValidacaoFichaCadastral> {
 public:
  ValidacaoFichaCadastralCom()
      : AutomacaoComEventos(IID__ValidacaoFichaCadastral, CLSID_ValidacaoFichaCadastral,
                            DIID___ValidacaoFichaCadastral) {
    fichas_.FichaProgress = Progresso(kFichaProgress);
  }

  // The ten properties read and write the validator's public fields, nothing more.
  HRESULT STDMETHODCALLTYPE get_sNumeroRemessaRef(BSTR* valor) override {
    return Le(valor, fichas_.sNumeroRemessaRef);
  }
  HRESULT STDMETHODCALLTYPE put_sNumeroRemessaRef(BSTR valor) override {
    return Escreve(valor, fichas_.sNumeroRemessaRef);
  }
  HRESULT STDMETHODCALLTYPE get_sTipo_Solicitacao(BSTR* valor) override {
    return Le(valor, fichas_.sTipo_Solicitacao);
  }
  HRESULT STDMETHODCALLTYPE put_sTipo_Solicitacao(BSTR valor) override {
    return Escreve(valor, fichas_.sTipo_Solicitacao);
  }
  HRESULT STDMETHODCALLTYPE get_sNro_Solicitacao(BSTR* valor) override {
    return Le(valor, fichas_.sNro_Solicitacao);
  }
  HRESULT STDMETHODCALLTYPE put_sNro_Solicitacao(BSTR valor) override {
    return Escreve(valor, fichas_.sNro_Solicitacao);
  }
  HRESULT STDMETHODCALLTYPE get_iOrdem_Faturamento(short* valor) override {
    return Le(valor, fichas_.iOrdem_Faturamento);
  }
  HRESULT STDMETHODCALLTYPE put_iOrdem_Faturamento(short valor) override {
    fichas_.iOrdem_Faturamento = valor;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_iOrdem_Talao(short* valor) override {
    return Le(valor, fichas_.iOrdem_Talao);
  }
  HRESULT STDMETHODCALLTYPE put_iOrdem_Talao(short valor) override {
    fichas_.iOrdem_Talao = valor;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_Dt_Inicio_Atividade(BSTR* valor) override {
    return Le(valor, fichas_.Dt_Inicio_Atividade);
  }
  HRESULT STDMETHODCALLTYPE put_Dt_Inicio_Atividade(BSTR valor) override {
    return Escreve(valor, fichas_.Dt_Inicio_Atividade);
  }
  HRESULT STDMETHODCALLTYPE get_Dt_Fim_Atividade(BSTR* valor) override {
    return Le(valor, fichas_.Dt_Fim_Atividade);
  }
  HRESULT STDMETHODCALLTYPE put_Dt_Fim_Atividade(BSTR valor) override {
    return Escreve(valor, fichas_.Dt_Fim_Atividade);
  }
  HRESULT STDMETHODCALLTYPE get_contSolicitacao(long* valor) override {
    return Le(valor, fichas_.contSolicitacao);
  }
  HRESULT STDMETHODCALLTYPE put_contSolicitacao(long valor) override {
    fichas_.contSolicitacao = valor;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_contInscricao(long* valor) override {
    return Le(valor, fichas_.contInscricao);
  }
  HRESULT STDMETHODCALLTYPE put_contInscricao(long valor) override {
    fichas_.contInscricao = valor;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_bTem_Erro_Grave(VARIANT_BOOL* valor) override {
    return Le(valor, Booleano(fichas_.bTem_Erro_Grave));
  }
  HRESULT STDMETHODCALLTYPE put_bTem_Erro_Grave(VARIANT_BOOL valor) override {
    fichas_.bTem_Erro_Grave = valor != VARIANT_FALSE;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Valida_Fichas(BSTR sArquivoRemessa, BSTR* nNumeroRemessa,
                                          BSTR sDiretorioTrabalho, double nChaveRemessa,
                                          double nChaveProcessamento, BSTR sOrigemChamada,
                                          BSTR sNomeServidor, BSTR sCaracterSeparador,
                                          short* resultado) override {
    return RodaValidador(emExecucao_, nNumeroRemessa, resultado, [&](std::string& numero) {
      return fichas_.Valida_Fichas(Utf8(sArquivoRemessa), numero, Utf8(sDiretorioTrabalho),
                                   nChaveRemessa, nChaveProcessamento, Utf8(sOrigemChamada),
                                   Utf8(sNomeServidor), Utf8(sCaracterSeparador));
    });
  }

  HRESULT STDMETHODCALLTYPE Procedimentos_Finais_Fichas(BSTR* sDIRETORIOORDADV,
                                                        VARIANT_BOOL* resultado) override {
    if (sDIRETORIOORDADV == nullptr) return E_POINTER;
    return Logico(resultado,
                  [&] { return fichas_.Procedimentos_Finais_Fichas(Utf8(*sDIRETORIOORDADV)); });
  }

  HRESULT STDMETHODCALLTYPE Gravar_Erro_Ficha(long lCodErro, double* dLINHA,
                                              VARIANT_BOOL* resultado) override {
    return Logico(resultado, [&] {
      return fichas_.Gravar_Erro_Ficha(lCodErro, dLINHA == nullptr ? 0 : *dLINHA);
    });
  }

  HRESULT STDMETHODCALLTYPE Gravar_Erro_FichaTR110(long lCodErro, double* dLINHA,
                                                   VARIANT_BOOL* resultado) override {
    return Logico(resultado, [&] {
      return fichas_.Gravar_Erro_FichaTR110(lCodErro, dLINHA == nullptr ? 0 : *dLINHA);
    });
  }

 private:
  static HRESULT Escreve(BSTR valor, std::string& campo) {
    return Protegido([&] { campo = Utf8(valor); });
  }

  quorv::ValidacaoFichaCadastral fichas_;
  bool emExecucao_ = false;
};

}  // namespace

HRESULT CriaValidacaoFichaCadastral(REFIID iid, void** objeto) {
  return Cria<ValidacaoFichaCadastralCom>(iid, objeto);
}

}  // namespace quorv::com
