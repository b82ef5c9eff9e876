// The creatable classes of the component: each one's identifier and how to create it.
#ifndef QUORVVALIDA_SRC_COM_CLASSES_HPP_
#define QUORVVALIDA_SRC_COM_CLASSES_HPP_

#include <windows.h>

#include <cstddef>

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

}  // namespace quorv::com

#endif  // QUORVVALIDA_SRC_COM_CLASSES_HPP_
