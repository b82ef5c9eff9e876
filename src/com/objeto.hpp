// What every class of the component shares: reference counting, QueryInterface, IDispatch through
// the type library, IProvideClassInfo2 and ISupportErrorInfo. A class derives from
// Automacao<its default interface> and implements that interface's members.
#ifndef QUORVVALIDA_SRC_COM_OBJETO_HPP_
#define QUORVVALIDA_SRC_COM_OBJETO_HPP_

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <new>

#include "despacho.hpp"
#include "eventos.hpp"
#include "modulo.hpp"

namespace quorv::com {

template <class Interface>
class Automacao : public Interface, public IProvideClassInfo2, public ISupportErrorInfo {
 public:
  Automacao(const Automacao&) = delete;
  Automacao& operator=(const Automacao&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override {
    if (objeto == nullptr) return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, iid_)) {
      *objeto = static_cast<Interface*>(this);
    } else if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2)) {
      *objeto = static_cast<IProvideClassInfo2*>(this);
    } else if (IsEqualIID(iid, IID_ISupportErrorInfo)) {
      *objeto = static_cast<ISupportErrorInfo*>(this);
    } else {
      *objeto = OutraInterface(iid);
    }
    if (*objeto == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&referencias_); }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG restantes = InterlockedDecrement(&referencias_);
    if (restantes == 0) delete this;
    return restantes;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quantos) override {
    if (quantos == nullptr) return E_POINTER;
    *quantos = despacho_ != nullptr ? 1 : 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT indice, LCID, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (indice != 0) return DISP_E_BADINDEX;
    if (despacho_ == nullptr) return E_UNEXPECTED;
    return despacho_->InfoDeTipo(info);
  }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* nomes, UINT quantos, LCID,
                                          DISPID* ids) override {
    if (despacho_ == nullptr) return E_UNEXPECTED;
    return despacho_->Nomes(nomes, quantos, ids);
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID, WORD bandeiras,
                                   DISPPARAMS* parametros, VARIANT* resultado, EXCEPINFO* excecao,
                                   UINT* argumentoComErro) override {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (despacho_ == nullptr) return E_UNEXPECTED;
    // The object lives until the call ends, even when a host releases it from an event.
    AddRef();
    const HRESULT hr = despacho_->Invoca(static_cast<Interface*>(this), id, bandeiras, parametros,
                                         resultado, excecao, argumentoComErro);
    Release();
    return hr;
  }

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    return InfoDeTipo(clsid_, info);
  }

  HRESULT STDMETHODCALLTYPE GetGUID(DWORD tipo, GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    if (tipo != GUIDKIND_DEFAULT_SOURCE_DISP_IID || IsEqualIID(eventos_, IID_NULL)) {
      *guid = GUID_NULL;
      return E_INVALIDARG;
    }
    *guid = eventos_;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
    return IsEqualIID(iid, iid_) ? S_OK : S_FALSE;
  }

 protected:
  // iid: the default interface; clsid: the class; eventos: its source dispinterface, if any.
  Automacao(REFIID iid, REFCLSID clsid, REFIID eventos = IID_NULL)
      : iid_(iid), clsid_(clsid), eventos_(eventos), despacho_(Despacho::DaInterface(iid)) {
    ObjetoCriado();
  }

  virtual ~Automacao() { ObjetoDestruido(); }

  // Further interfaces of a class (its connection points); null when it has none by that IID.
  virtual void* OutraInterface(REFIID) { return nullptr; }

  // The default interface, as the other interfaces of the object hand out its identity.
  IUnknown* Identidade() { return static_cast<Interface*>(this); }

 private:
  const IID iid_;
  const CLSID clsid_;
  const IID eventos_;
  const Despacho* const despacho_;
  LONG referencias_ = 1;
};

// A class that raises events: Automacao plus the connection point container of its source
// dispinterface, on the same identity.
template <class Interface>
class AutomacaoComEventos : public Automacao<Interface> {
 protected:
  AutomacaoComEventos(REFIID iid, REFCLSID clsid, REFIID eventos)
      : Automacao<Interface>(iid, clsid, eventos), eventos_(this->Identidade(), eventos) {}

  void* OutraInterface(REFIID iid) override {
    if (IsEqualIID(iid, IID_IConnectionPointContainer)) {
      return static_cast<IConnectionPointContainer*>(&eventos_);
    }
    return nullptr;
  }

  // The progress callback of the validator, raising the event with that DISPID.
  std::function<void(double&)> Progresso(DISPID id) {
    return quorv::com::Progresso(eventos_.Ponto(), id);
  }

 private:
  ContainerDeEventos eventos_;
};

// The IUnknown of a helper object with one interface of its own and its own reference count (a
// class factory, an enumerator).
template <class Interface>
class Simples : public Interface {
 public:
  Simples(const Simples&) = delete;
  Simples& operator=(const Simples&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override {
    if (objeto == nullptr) return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(Interface))) {
      *objeto = static_cast<Interface*>(this);
      AddRef();
      return S_OK;
    }
    *objeto = nullptr;
    return E_NOINTERFACE;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&referencias_); }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG restantes = InterlockedDecrement(&referencias_);
    if (restantes == 0) delete this;
    return restantes;
  }

 protected:
  Simples() = default;
  virtual ~Simples() = default;

 private:
  LONG referencias_ = 1;
};

// Creates an object of a class, answering the interface asked for (the class factory's part).
template <class Classe>
HRESULT Cria(REFIID iid, void** objeto) {
  Classe* novo = new (std::nothrow) Classe();
  if (novo == nullptr) return E_OUTOFMEMORY;
  const HRESULT hr = novo->QueryInterface(iid, objeto);
  novo->Release();
  return hr;
}

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_OBJETO_HPP_
