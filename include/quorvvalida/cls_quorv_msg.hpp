// clsQuorvMsg: the texts of the producer-invoice warning codes.
#ifndef QUORVVALIDA_CLS_QUORV_MSG_HPP_
#define QUORVVALIDA_CLS_QUORV_MSG_HPP_

#include <cstdint>
#include <string>

#include "quorvvalida/exportacao.h"

namespace quorv {

// Turns an invoice warning code into its fixed Portuguese text (UTF-8). Stateless.
class QUORVVALIDA_API clsQuorvMsg {
 public:
  // The text of the code; "Erro não cadastrado" for a code without one.
  std::string MensagemAdvertencia(const int16_t& nCodigoAdvertencia) const;
};

}  // namespace quorv

#endif  // QUORVVALIDA_CLS_QUORV_MSG_HPP_
