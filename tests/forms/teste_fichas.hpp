// A test that builds a registration-form file, validates it through ValidacaoFichaCadastral and
// reads what the run left in its working directory.
#ifndef QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_
#define QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_

#include <cstdio>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_fichas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace quorv::teste {

// A warning expected at a line of the file: its code and the 1-based line.
using Esperada = std::pair<int, int>;

// The number of a line as the warnings file writes it.
inline std::string NumeroDaLinha(int linha) {
  char numero[16];
  std::snprintf(numero, sizeof numero, "%08d", linha);
  return numero;
}

// A field that a test lays over a default record.
struct CampoAlterado {
  int coluna;
  int largura;
  std::string valor;
};

// One record of a request checked field by field: the fields changed in it (and in the person
// record before it, for a name record), the warning codes expected against it in order, and the
// run's origin and the activity period of the request's establishment.
struct CasoRegistro {
  std::string nome;
  std::vector<CampoAlterado> campos;
  std::vector<int> codigos;
  std::string origem = "";
  std::vector<CampoAlterado> camposDoPai = {};
  std::string inicioAtividade = "20200101";
  std::string fimAtividade = "00000000";
};

// Failure messages name the case.
inline void PrintTo(const CasoRegistro& caso, std::ostream* saida) {
  *saida << caso.nome;
}

class TesteFichas : public ::testing::Test {
 protected:
  TesteFichas() {
    validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  }

  // Validates the file built so far; the optional arguments are the defaults unless given.
  int16_t Valida(const std::string& origem = "", const std::string& servidor = "") {
    return validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0, 0,
                                   origem, servidor);
  }

  // The warnings file the run left, or empty when it left none.
  std::string Gravadas() const { return LeBytes(diretorio.Advertencias()); }

  // The warnings file expected: each warning against the record at its line, in order. Line 0
  // stands for the establishment line of an object that has read none: an empty copy and an
  // empty number.
  std::string Esperado(const std::vector<Esperada>& advertencias) {
    Advertencias esperado;
    for (const auto& [codigo, linha] : advertencias) {
      if (linha == 0) {
        esperado.Linha(codigo, "", "");
      } else {
        esperado.Linha(codigo, arquivo.Linha(static_cast<std::size_t>(linha - 1)).Texto(),
                       NumeroDaLinha(linha));
      }
    }
    return esperado.Texto();
  }

  // Validates a request of one record of type `tr` laid out as the case says, after its
  // establishment (and, for a name record, after its person), and compares the warnings: the
  // record's own, at line 4 (5 for a name record), then the rejection of the request against its
  // establishment on line 3.
  void ConfereRegistro(const std::string& tr, const CasoRegistro& caso,
                       const std::string& servidor = "") {
    arquivo.Cabecalho();
    arquivo.TR100();
    arquivo.TR110().Campo(42, 8, caso.inicioAtividade).Campo(50, 8, caso.fimAtividade);
    int linha = 4;
    if (tr == "121" || tr == "126" || tr == "131") {
      Registro& pai = arquivo.Pessoa(tr == "121" ? "120" : tr == "126" ? "125" : "130");
      for (const CampoAlterado& campo : caso.camposDoPai)
        pai.Campo(campo.coluna, campo.largura, campo.valor);
      linha = 5;
    }
    Registro& registro = arquivo.Padrao(tr);
    for (const CampoAlterado& campo : caso.campos)
      registro.Campo(campo.coluna, campo.largura, campo.valor);
    arquivo.DaSolicitacao("199");
    arquivo.Trailer();
    std::vector<Esperada> esperadas;
    for (int codigo : caso.codigos)
      esperadas.push_back({codigo, linha});
    if (!esperadas.empty()) esperadas.push_back({125, 3});
    EXPECT_EQ(Valida(caso.origem, servidor), 8);
    EXPECT_EQ(Gravadas(), Esperado(esperadas));
  }

  DiretorioTemporario diretorio;
  ArquivoFichas arquivo;
  ValidacaoFichaCadastral validacao;
  std::string numeroRemessa;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_
