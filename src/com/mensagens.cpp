// clsQuorvMsg and clsQuorvMsgFichas: the catalogues of warning texts.
#include "QuorvValida.h"
#include "classes.hpp"
#include "objeto.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

class ClsQuorvMsgCom final : public Automacao<_clsQuorvMsg> {
 public:
  ClsQuorvMsgCom() : Automacao(IID__clsQuorvMsg, CLSID_clsQuorvMsg) {}

  HRESULT STDMETHODCALLTYPE MensagemAdvertencia(short* nCodigoAdvertencia,
                                                BSTR* resultado) override {
    if (nCodigoAdvertencia == nullptr) return E_POINTER;
    return Texto(resultado, [&] { return catalogo_.MensagemAdvertencia(*nCodigoAdvertencia); });
  }

 private:
  quorv::clsQuorvMsg catalogo_;
};

class ClsQuorvMsgFichasCom final : public Automacao<_clsQuorvMsgFichas> {
 public:
  ClsQuorvMsgFichasCom() : Automacao(IID__clsQuorvMsgFichas, CLSID_clsQuorvMsgFichas) {}

  HRESULT STDMETHODCALLTYPE MensagemAdvertenciaFichas(short* nCodigoAdvertencia,
                                                      BSTR* resultado) override {
    if (nCodigoAdvertencia == nullptr) return E_POINTER;
    return Texto(resultado,
                 [&] { return catalogo_.MensagemAdvertenciaFichas(*nCodigoAdvertencia); });
  }

 private:
  quorv::clsQuorvMsgFichas catalogo_;
};

}  // namespace

HRESULT CriaClsQuorvMsg(REFIID iid, void** objeto) {
  return Cria<ClsQuorvMsgCom>(iid, objeto);
}

HRESULT CriaClsQuorvMsgFichas(REFIID iid, void** objeto) {
  return Cria<ClsQuorvMsgFichasCom>(iid, objeto);
}

}  // namespace quorv::com
