// A test that builds an invoice file, validates it through Validacao and reads what the run
// left in its working directory.
#ifndef QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_
#define QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_

#include <string>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/validacao.hpp"

namespace quorv::teste {

class TesteNotas : public ::testing::Test {
 protected:
  TesteNotas() {
    validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  }

  // Validates the file built so far with the default optional arguments.
  int16_t Valida() {
    return validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto());
  }

  // The warnings file the run left, or empty when it left none.
  std::string Gravadas() const { return LeBytes(diretorio.Advertencias()); }

  DiretorioTemporario diretorio;
  ArquivoNotas arquivo;
  Validacao validacao;
  std::string numeroRemessa;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_
