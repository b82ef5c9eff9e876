// A test that builds a registration-form file, validates it through ValidacaoFichaCadastral and
// reads what the run left in its working directory.
#ifndef QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_
#define QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_

#include <cstdio>
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

  DiretorioTemporario diretorio;
  ArquivoFichas arquivo;
  ValidacaoFichaCadastral validacao;
  std::string numeroRemessa;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_FORMS_TESTE_FICHAS_HPP_
