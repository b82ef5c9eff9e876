#include "eventos.hpp"

#include <new>

#include "classes.hpp"
#include "objeto.hpp"

namespace quorv::com {
namespace {

// A snapshot enumerator over the elements it was given (connection points or connections),
// holding a reference to each.
template <class IEnum, class Elemento>
class Enumerador final : public Simples<IEnum> {
 public:
  explicit Enumerador(std::vector<Elemento> elementos, ULONG posicao = 0)
      : elementos_(std::move(elementos)), posicao_(posicao) {
    for (Elemento& elemento : elementos_)
      Referencia(elemento);
  }

  ~Enumerador() override {
    for (Elemento& elemento : elementos_)
      Solta(elemento);
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG quantos, Elemento* destino, ULONG* entregues) override {
    if (destino == nullptr || (quantos > 1 && entregues == nullptr)) return E_POINTER;
    ULONG n = 0;
    for (; n < quantos && posicao_ < elementos_.size(); ++n, ++posicao_) {
      destino[n] = elementos_[posicao_];
      Referencia(destino[n]);
    }
    if (entregues != nullptr) *entregues = n;
    return n == quantos ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG quantos) override {
    const ULONG restam = static_cast<ULONG>(elementos_.size()) - posicao_;
    posicao_ += quantos < restam ? quantos : restam;
    return quantos <= restam ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    posicao_ = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IEnum** copia) override {
    if (copia == nullptr) return E_POINTER;
    *copia = new (std::nothrow) Enumerador(elementos_, posicao_);
    return *copia == nullptr ? E_OUTOFMEMORY : S_OK;
  }

 private:
  static void Referencia(IConnectionPoint* ponto) { ponto->AddRef(); }
  static void Referencia(CONNECTDATA& conexao) { conexao.pUnk->AddRef(); }
  static void Solta(IConnectionPoint* ponto) { ponto->Release(); }
  static void Solta(CONNECTDATA& conexao) { conexao.pUnk->Release(); }

  std::vector<Elemento> elementos_;
  ULONG posicao_;
};

}  // namespace

PontoDeConexao::PontoDeConexao(IUnknown* dono, IConnectionPointContainer* container, REFIID eventos)
    : dono_(dono), container_(container), eventos_(eventos) {}

PontoDeConexao::~PontoDeConexao() {
  for (auto& receptor : receptores_)
    receptor.second->Release();
}

HRESULT PontoDeConexao::QueryInterface(REFIID iid, void** objeto) {
  if (objeto == nullptr) return E_POINTER;
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IConnectionPoint)) {
    *objeto = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
  }
  *objeto = nullptr;
  return E_NOINTERFACE;
}

ULONG PontoDeConexao::AddRef() {
  return dono_->AddRef();
}

ULONG PontoDeConexao::Release() {
  return dono_->Release();
}

HRESULT PontoDeConexao::GetConnectionInterface(IID* iid) {
  if (iid == nullptr) return E_POINTER;
  *iid = eventos_;
  return S_OK;
}

HRESULT PontoDeConexao::GetConnectionPointContainer(IConnectionPointContainer** c) {
  if (c == nullptr) return E_POINTER;
  container_->AddRef();
  *c = container_;
  return S_OK;
}

HRESULT PontoDeConexao::Advise(IUnknown* receptor, DWORD* cookie) {
  if (cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (receptor == nullptr) return E_POINTER;
  // A sink answers the event dispinterface itself, or (script engines) plain IDispatch.
  IDispatch* despacho = nullptr;
  if (FAILED(receptor->QueryInterface(eventos_, reinterpret_cast<void**>(&despacho))) &&
      FAILED(receptor->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&despacho)))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  receptores_.emplace_back(proximoCookie_, despacho);
  *cookie = proximoCookie_++;
  return S_OK;
}

HRESULT PontoDeConexao::Unadvise(DWORD cookie) {
  for (auto it = receptores_.begin(); it != receptores_.end(); ++it) {
    if (it->first == cookie) {
      IDispatch* receptor = it->second;
      receptores_.erase(it);
      receptor->Release();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

HRESULT PontoDeConexao::EnumConnections(IEnumConnections** enumerador) {
  if (enumerador == nullptr) return E_POINTER;
  std::vector<CONNECTDATA> conexoes;
  for (const auto& receptor : receptores_)
    conexoes.push_back({receptor.second, receptor.first});
  *enumerador = new (std::nothrow) Enumerador<IEnumConnections, CONNECTDATA>(std::move(conexoes));
  return *enumerador == nullptr ? E_OUTOFMEMORY : S_OK;
}

void PontoDeConexao::Dispara(DISPID id, double& valor) {
  if (receptores_.empty()) return;
  atuais_.clear();
  for (const auto& receptor : receptores_) {
    receptor.second->AddRef();
    atuais_.push_back(receptor.second);
  }
  for (IDispatch* receptor : atuais_) {
    VARIANTARG argumento;
    V_VT(&argumento) = VT_R8 | VT_BYREF;
    V_R8REF(&argumento) = &valor;
    DISPPARAMS parametros = {&argumento, nullptr, 1, 0};
    receptor->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parametros, nullptr,
                     nullptr, nullptr);
    receptor->Release();
  }
}

ContainerDeEventos::ContainerDeEventos(IUnknown* dono, REFIID eventos)
    : dono_(dono), ponto_(dono, this, eventos) {}

HRESULT ContainerDeEventos::QueryInterface(REFIID iid, void** objeto) {
  return dono_->QueryInterface(iid, objeto);
}

ULONG ContainerDeEventos::AddRef() {
  return dono_->AddRef();
}

ULONG ContainerDeEventos::Release() {
  return dono_->Release();
}

HRESULT ContainerDeEventos::EnumConnectionPoints(IEnumConnectionPoints** enumerador) {
  if (enumerador == nullptr) return E_POINTER;
  *enumerador = new (std::nothrow) Enumerador<IEnumConnectionPoints, IConnectionPoint*>(
      {static_cast<IConnectionPoint*>(&ponto_)});
  return *enumerador == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT ContainerDeEventos::FindConnectionPoint(REFIID iid, IConnectionPoint** ponto) {
  if (ponto == nullptr) return E_POINTER;
  IID eventos;
  ponto_.GetConnectionInterface(&eventos);
  if (!IsEqualIID(iid, eventos)) {
    *ponto = nullptr;
    return CONNECT_E_NOCONNECTION;
  }
  ponto_.AddRef();
  *ponto = &ponto_;
  return S_OK;
}

std::function<void(double&)> Progresso(PontoDeConexao& ponto, DISPID id) {
  return [&ponto, id](double& porcentagem) {
    Protegido([&] {
      MSG mensagem;
      while (PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE)) {
        if (mensagem.message == WM_QUIT) {
          PostQuitMessage(static_cast<int>(mensagem.wParam));
          break;
        }
        TranslateMessage(&mensagem);
        DispatchMessageW(&mensagem);
      }
      ponto.Dispara(id, porcentagem);
    });
  };
}

}  // namespace quorv::com
