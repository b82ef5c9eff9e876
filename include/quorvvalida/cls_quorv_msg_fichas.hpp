// clsQuorvMsgFichas: the texts of the registration-form warning codes.
#ifndef QUORVVALIDA_CLS_QUORV_MSG_FICHAS_HPP_
#define QUORVVALIDA_CLS_QUORV_MSG_FICHAS_HPP_

#include <cstdint>
#include <string>

#include "quorvvalida/exportacao.h"

namespace quorv {

// Turns a registration-form warning code into its fixed Portuguese text (UTF-8). Stateless.
class QUORVVALIDA_API clsQuorvMsgFichas {
 public:
  // The text of a code from 1 to 129; the empty text for any other code.
  std::string MensagemAdvertenciaFichas(const int16_t& nCodigoAdvertencia) const;
};

}  // namespace quorv

#endif  // QUORVVALIDA_CLS_QUORV_MSG_FICHAS_HPP_
