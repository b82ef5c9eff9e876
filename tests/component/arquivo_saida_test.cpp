// The writer of the warnings and return files tells a write that did not reach the file: on a
// device where every write fails, at the write that hands its buffer over or at the closing.
#include "component/files/arquivo_saida.hpp"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "arquivos.hpp"

namespace quorv::teste {
namespace {

bool TemDispositivoCheio() {
  std::error_code erro;
  return std::filesystem::is_character_file("/dev/full", erro);
}

TEST(ArquivoSaida, PoucoQueFicaNoBufferFalhaAoFechar) {
  if (!TemDispositivoCheio()) GTEST_SKIP() << "sem /dev/full";
  ArquivoSaida saida;
  ASSERT_TRUE(saida.Criar("/dev/full"));
  EXPECT_TRUE(saida.Escreve("uma linha\r\n"));
  EXPECT_FALSE(saida.Falhou());
  EXPECT_FALSE(saida.Fechar());
  EXPECT_TRUE(saida.Falhou());
}

TEST(ArquivoSaida, MuitoFalhaNaEscritaQueEsvaziaOBuffer) {
  if (!TemDispositivoCheio()) GTEST_SKIP() << "sem /dev/full";
  ArquivoSaida saida;
  ASSERT_TRUE(saida.Criar("/dev/full"));
  const std::string linha(300, 'x');
  bool todas = true;
  for (std::size_t escritos = 0; escritos <= ArquivoSaida::kBuffer; escritos += linha.size())
    todas = saida.Escreve(linha) && todas;
  EXPECT_FALSE(todas);
  EXPECT_TRUE(saida.Falhou());
  EXPECT_FALSE(saida.Fechar());
}

TEST(ArquivoSaida, ArquivoComumNaoFalhaECriarDeNovoEsqueceAFalha) {
  DiretorioTemporario diretorio;
  ArquivoSaida saida;
  if (TemDispositivoCheio()) {
    ASSERT_TRUE(saida.Criar("/dev/full"));
    saida.Escreve("x");
    saida.Fechar();
    ASSERT_TRUE(saida.Falhou());
  }
  ASSERT_TRUE(saida.Criar(diretorio.Arquivo("comum.txt")));
  EXPECT_FALSE(saida.Falhou());
  EXPECT_TRUE(saida.Escreve("abc"));
  EXPECT_TRUE(saida.Fechar());
  EXPECT_FALSE(saida.Falhou());
  EXPECT_EQ(LeBytes(diretorio.Arquivo("comum.txt")), "abc");
}

}  // namespace
}  // namespace quorv::teste
