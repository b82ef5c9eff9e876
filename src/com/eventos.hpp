// The events of a class: its connection point container and the one connection point of its
// source dispinterface, to which any number of sinks may be connected at once.
#ifndef QUORVVALIDA_SRC_COM_EVENTOS_HPP_
#define QUORVVALIDA_SRC_COM_EVENTOS_HPP_

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <functional>
#include <utility>
#include <vector>

namespace quorv::com {

// The connection point. It lives inside the object that raises the events and counts its
// references with it; its own identity answers IUnknown and IConnectionPoint only.
class PontoDeConexao final : public IConnectionPoint {
 public:
  PontoDeConexao(IUnknown* dono, IConnectionPointContainer* container, REFIID eventos);
  ~PontoDeConexao();
  PontoDeConexao(const PontoDeConexao&) = delete;
  PontoDeConexao& operator=(const PontoDeConexao&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** c) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* receptor, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** enumerador) override;

  // Raises the event with that DISPID and one Double passed by reference: every sink connected
  // when it starts receives it in turn and may change the value, which the run then sees. A sink
  // that fails or disconnects meanwhile does not stop the others or the run.
  void Dispara(DISPID id, double& valor);

 private:
  IUnknown* const dono_;
  IConnectionPointContainer* const container_;
  const IID eventos_;
  std::vector<std::pair<DWORD, IDispatch*>> receptores_;
  // The sinks of the event being raised, held apart since a sink may disconnect meanwhile; kept
  // between events so that raising one (once per line of a form file) allocates nothing. Events
  // never nest: a run cannot start while one is raised.
  std::vector<IDispatch*> atuais_;
  DWORD proximoCookie_ = 1;
};

// The container, on the identity of the object that raises the events.
class ContainerDeEventos final : public IConnectionPointContainer {
 public:
  ContainerDeEventos(IUnknown* dono, REFIID eventos);
  ContainerDeEventos(const ContainerDeEventos&) = delete;
  ContainerDeEventos& operator=(const ContainerDeEventos&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** objeto) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** enumerador) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** ponto) override;

  PontoDeConexao& Ponto() { return ponto_; }

 private:
  IUnknown* const dono_;
  PontoDeConexao ponto_;
};

// The progress callback of a validator: the run yields to the window messages waiting for its
// thread (so that its host repaints and reacts; a quit request is put back for the host's own
// loop), then the event with that DISPID goes to every sink connected to the point.
std::function<void(double&)> Progresso(PontoDeConexao& ponto, DISPID id);

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_EVENTOS_HPP_
