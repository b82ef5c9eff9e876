// ValidacaoTarnWEB: the treasury web system's entry points; its two properties are write-only.
#include <string>

#include "QuorvValida.h"
#include "classes.hpp"
#include "objeto.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

class ValidacaoTarnWEBCom final : public Automacao<_ValidacaoTarnWEB> {
 public:
  ValidacaoTarnWEBCom() : Automacao(IID__ValidacaoTarnWEB, CLSID_ValidacaoTarnWEB) {}

  HRESULT STDMETHODCALLTYPE Valida_Dados_Tarnweb(BSTR sFilePath, BSTR sFileRetorno,
                                                 BSTR sDirTrabalho, BSTR* nNumeroRemessa,
                                                 VARIANT_BOOL* resultado) override {
    return Valida(nNumeroRemessa, resultado, [&](std::string& numero) {
      return web_.Valida_Dados_Tarnweb(Utf8(sFilePath), Utf8(sFileRetorno), Utf8(sDirTrabalho),
                                       numero);
    });
  }

  HRESULT STDMETHODCALLTYPE BreakString(BSTR psTexto, short piSub, short piMaxLen,
                                        BSTR* resultado) override {
    return Texto(resultado, [&] { return web_.BreakString(Utf8(psTexto), piSub, piMaxLen); });
  }

  HRESULT STDMETHODCALLTYPE Valida_TIPO(BSTR sFilePath, BSTR sFileRetorno, BSTR sDirTrabalho,
                                        BSTR* nNumeroRemessa, BSTR sTipoDoc,
                                        VARIANT_BOOL* resultado) override {
    return Valida(nNumeroRemessa, resultado, [&](std::string& numero) {
      return web_.Valida_TIPO(Utf8(sFilePath), Utf8(sFileRetorno), Utf8(sDirTrabalho), numero,
                              Utf8(sTipoDoc));
    });
  }

  HRESULT STDMETHODCALLTYPE Valida_Dados_Ficha_Cadastral(BSTR sFilePath, BSTR sFileRetorno,
                                                         BSTR sDirTrabalho, BSTR* nNumeroRemessa,
                                                         VARIANT_BOOL* resultado) override {
    return Valida(nNumeroRemessa, resultado, [&](std::string& numero) {
      return web_.Valida_Dados_Ficha_Cadastral(Utf8(sFilePath), Utf8(sFileRetorno),
                                               Utf8(sDirTrabalho), numero);
    });
  }

  HRESULT STDMETHODCALLTYPE put_TipoArquivo(BSTR valor) override {
    return Protegido([&] { web_.TipoArquivo(Utf8(valor)); });
  }

  HRESULT STDMETHODCALLTYPE put_ProgramaChamador(BSTR valor) override {
    return Protegido([&] { web_.ProgramaChamador(Utf8(valor)); });
  }

 private:
  // Runs one of the validating entry points; the remessa number goes back to the caller.
  template <class Entrada>
  static HRESULT Valida(BSTR* nNumeroRemessa, VARIANT_BOOL* resultado, Entrada&& entrada) {
    return ComNumeroDaRemessa(nNumeroRemessa, resultado, VARIANT_BOOL{VARIANT_FALSE},
                              [&](std::string& numero) { return Booleano(entrada(numero)); });
  }

  quorv::ValidacaoTarnWEB web_;
};

}  // namespace

HRESULT CriaValidacaoTarnWEB(REFIID iid, void** objeto) {
  return Cria<ValidacaoTarnWEBCom>(iid, objeto);
}

}  // namespace quorv::com
