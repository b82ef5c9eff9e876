// QuorvValida: validation of producer-invoice and registration-form files for the state
// treasury. Include this header for the whole public contract.
#ifndef QUORVVALIDA_QUORVVALIDA_HPP_
#define QUORVVALIDA_QUORVVALIDA_HPP_

#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/file_utility.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/relogio.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "quorvvalida/versao.hpp"

#endif  // QUORVVALIDA_QUORVVALIDA_HPP_
