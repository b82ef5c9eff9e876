// A test that builds an invoice file, validates it through Validacao and reads what the run
// left in its working directory.
#ifndef QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_
#define QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"

namespace quorv::teste {

// The state-registration check of the invoice tests, in place of the external library: a
// registration of the home state made of digits only (blanks around allowed) is accepted; blanks
// alone, any other character, or another state are refused.
inline int16_t InscricaoDeTeste(const std::string& inscricao, const std::string& uf) {
  const std::size_t inicio = inscricao.find_first_not_of(' ');
  if (uf != "QZ" || inicio == std::string::npos) return 1;
  const std::size_t fim = inscricao.find_last_not_of(' ');
  for (std::size_t i = inicio; i <= fim; ++i) {
    if (inscricao[i] < '0' || inscricao[i] > '9') return 1;
  }
  return 0;
}

class TesteNotas : public ::testing::Test {
 protected:
  TesteNotas() {
    validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  }

  void SetUp() override { DefinirVerificadorInscricao(InscricaoDeTeste); }
  void TearDown() override { DefinirVerificadorInscricao(nullptr); }

  // The warnings file of a run that told the record these codes, in order, and nothing else.
  static std::string Na(const Registro& registro, const std::vector<int>& codigos) {
    Advertencias esperado;
    for (int codigo : codigos)
      esperado.Linha(codigo, registro.Texto(), registro.Texto().substr(0, 8));
    return esperado.Texto();
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

// A table case: fields laid into a record that its check accepts, and the codes the check tells
// then, in order (none: accepted).
struct CasoCampos {
  const char* nome;
  std::vector<Preenchimento> campos;
  std::vector<int> codigos;
};

inline std::string NomeDoCaso(const ::testing::TestParamInfo<CasoCampos>& info) {
  return info.param.nome;
}

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_INVOICES_TESTE_NOTAS_HPP_
