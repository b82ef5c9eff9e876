// clsQuorvAdvBDFichas: walks a registration-form warnings file record by record.
#include <stdexcept>

#include "QuorvValida.h"
#include "classes.hpp"
#include "despacho.hpp"
#include "objeto.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

// The error a reader without a stream reports from RecordCount, as the automation run time
// numbers "object variable not set" (91).
const HRESULT kSemArquivo = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 91);

class ClsQuorvAdvBDFichasCom final : public Automacao<_clsQuorvAdvBDFichas> {
 public:
  ClsQuorvAdvBDFichasCom() : Automacao(IID__clsQuorvAdvBDFichas, CLSID_clsQuorvAdvBDFichas) {}

  HRESULT STDMETHODCALLTYPE OpenStream(BSTR* psFilePath) override {
    if (psFilePath == nullptr) return E_POINTER;
    return Protegido([&] { leitor_.OpenStream(Utf8(*psFilePath)); });
  }

  HRESULT STDMETHODCALLTYPE CloseStream() override {
    return Protegido([&] { leitor_.CloseStream(); });
  }

  HRESULT STDMETHODCALLTYPE MoveNext() override {
    return Protegido([&] { leitor_.MoveNext(); });
  }

  HRESULT STDMETHODCALLTYPE get_EndOfStream(VARIANT_BOOL* valor) override {
    return Le(valor, Booleano(leitor_.EndOfStream()));
  }

  HRESULT STDMETHODCALLTYPE get_TR(BSTR* valor) override {
    return Texto(valor, [&] { return leitor_.TR(); });
  }

  HRESULT STDMETHODCALLTYPE get_Nota(BSTR* valor) override {
    return Texto(valor, [&] { return leitor_.Nota(); });
  }

  HRESULT STDMETHODCALLTYPE get_LINHA(long* valor) override { return Le(valor, leitor_.LINHA()); }

  HRESULT STDMETHODCALLTYPE get_Descricao(BSTR* valor) override {
    return Texto(valor, [&] { return leitor_.Descricao(); });
  }

  HRESULT STDMETHODCALLTYPE get_TotalRecords(long* valor) override {
    return Le(valor, leitor_.TotalRecords());
  }

  // The one member that reports a failure to its caller: asked without an open stream, the
  // reader's line position does not exist, and the caller is told so as an error.
  HRESULT STDMETHODCALLTYPE get_RecordCount(long* valor) override {
    if (valor == nullptr) return E_POINTER;
    *valor = 0;
    try {
      *valor = leitor_.RecordCount();
      return S_OK;
    } catch (const std::exception&) {
      DefineErro(IID__clsQuorvAdvBDFichas, L"Nenhum arquivo de advertências está aberto.");
      return kSemArquivo;
    }
  }

 private:
  quorv::clsQuorvAdvBDFichas leitor_;
};

}  // namespace

HRESULT CriaClsQuorvAdvBDFichas(REFIID iid, void** objeto) {
  return Cria<ClsQuorvAdvBDFichasCom>(iid, objeto);
}

}  // namespace quorv::com
