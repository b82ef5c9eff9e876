#include "classes.hpp"

#include "QuorvValida.h"

namespace quorv::com {

const Classe* Classes(std::size_t* quantas) {
  static const Classe classes[] = {
      {&CLSID_Validacao, CriaValidacao},
      {&CLSID_ValidacaoFichaCadastral, CriaValidacaoFichaCadastral},
      {&CLSID_ValidacaoTarnWEB, CriaValidacaoTarnWEB},
      {&CLSID_FileUtility, CriaFileUtility},
      {&CLSID_clsQuorvMsg, CriaClsQuorvMsg},
      {&CLSID_clsQuorvMsgFichas, CriaClsQuorvMsgFichas},
      {&CLSID_clsQuorvAdvBDFichas, CriaClsQuorvAdvBDFichas},
  };
  *quantas = sizeof classes / sizeof classes[0];
  return classes;
}

}  // namespace quorv::com
