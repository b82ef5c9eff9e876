// The creatable classes of the component: each one's identifier and how to create it.
#ifndef QUORVVALIDA_SRC_COM_CLASSES_HPP_
#define QUORVVALIDA_SRC_COM_CLASSES_HPP_

#include <windows.h>

#include <cstddef>
#include <string>

#include "texto.hpp"

namespace quorv::com {

// Creates an object of the class and answers the interface asked for.
using Criacao = HRESULT (*)(REFIID iid, void** objeto);

struct Classe {
  const CLSID* clsid;
  Criacao cria;
};

// The seven classes a host can create, in the order of the type library.
const Classe* Classes(std::size_t* quantas);

HRESULT CriaValidacao(REFIID iid, void** objeto);
HRESULT CriaValidacaoFichaCadastral(REFIID iid, void** objeto);
HRESULT CriaValidacaoTarnWEB(REFIID iid, void** objeto);
HRESULT CriaFileUtility(REFIID iid, void** objeto);
HRESULT CriaClsQuorvMsg(REFIID iid, void** objeto);
HRESULT CriaClsQuorvMsgFichas(REFIID iid, void** objeto);
HRESULT CriaClsQuorvAdvBDFichas(REFIID iid, void** objeto);

// Runs a member's work; a failure that escapes the library (memory exhausted) leaves the results
// as the member set them beforehand: no failure leaves a member as a COM error.
template <class Trabalho>
HRESULT Protegido(Trabalho&& trabalho) {
  try {
    trabalho();
  } catch (...) {
  }
  return S_OK;
}

// The automation Boolean of a C++ one.
inline VARIANT_BOOL Booleano(bool valor) {
  return valor ? VARIANT_TRUE : VARIANT_FALSE;
}

// A member that answers a text the library gives; null when that fails.
template <class Leitura>
HRESULT Texto(BSTR* resultado, Leitura&& leitura) {
  if (resultado == nullptr) return E_POINTER;
  *resultado = nullptr;
  return Protegido([&] { *resultado = NovoBstr(leitura()); });
}

// A member that answers yes or no from the library; false when that fails.
template <class Pergunta>
HRESULT Logico(VARIANT_BOOL* resultado, Pergunta&& pergunta) {
  if (resultado == nullptr) return E_POINTER;
  *resultado = VARIANT_FALSE;
  return Protegido([&] { *resultado = Booleano(pergunta()); });
}

// A property that answers a number or a Boolean as it is.
template <class Valor, class Campo>
HRESULT Le(Valor* destino, const Campo& campo) {
  if (destino == nullptr) return E_POINTER;
  *destino = campo;
  return S_OK;
}

// A property that answers a text field as it is.
inline HRESULT Le(BSTR* destino, const std::string& campo) {
  return Texto(destino, [&]() -> const std::string& { return campo; });
}

// Runs a validating member: the run gets the remessa number the caller passed (as UTF-8) and the
// caller gets back the one the run left. The result holds `falha` unless the run answered.
template <class Resultado, class Corrida>
HRESULT ComNumeroDaRemessa(BSTR* nNumeroRemessa, Resultado* resultado, Resultado falha,
                           Corrida&& corrida) {
  if (nNumeroRemessa == nullptr || resultado == nullptr) return E_POINTER;
  *resultado = falha;
  return Protegido([&] {
    std::string numero = Utf8(*nNumeroRemessa);
    *resultado = corrida(numero);
    Substitui(nNumeroRemessa, numero);
  });
}

// A validator's run started from a window message handled during another run of the same object
// (the run yields to the host's messages) would corrupt the first; it answers 9 and does nothing.
// Marks the object busy for the duration of a run.
class EmExecucao {
 public:
  explicit EmExecucao(bool& ocupado) : ocupado_(ocupado), livre_(!ocupado) { ocupado_ = true; }
  ~EmExecucao() {
    if (livre_) ocupado_ = false;
  }
  EmExecucao(const EmExecucao&) = delete;
  EmExecucao& operator=(const EmExecucao&) = delete;
  // False when another run of the object is in progress.
  bool Livre() const { return livre_; }

 private:
  bool& ocupado_;
  const bool livre_;
};

// Valida_Dados and Valida_Fichas: one run at a time per object (a second answers 9), the remessa
// number to and from the caller.
template <class Corrida>
HRESULT RodaValidador(bool& ocupado, BSTR* nNumeroRemessa, short* resultado, Corrida&& corrida) {
  const EmExecucao execucao(ocupado);
  if (!execucao.Livre()) return resultado == nullptr ? E_POINTER : (*resultado = 9, S_OK);
  return ComNumeroDaRemessa(nNumeroRemessa, resultado, short{9}, corrida);
}

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_CLASSES_HPP_
