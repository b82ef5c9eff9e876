// The writer of the warnings and return files tells a write that did not reach the file: on a
// device where every write fails, at the write that hands its buffer over or at the closing.
#include "component/files/arquivo_saida.hpp"

#include <string>

#include <gtest/gtest.h>

#include "arquivos.hpp"
#include "robustez.hpp"

namespace quorv::teste {
namespace {

TEST(ArquivoSaida, PoucoQueFicaNoBufferFalhaAoFechar) {
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem /dev/full";
  ArquivoSaida saida;
  ASSERT_TRUE(saida.Criar(cheio));
  EXPECT_TRUE(saida.Escreve("uma linha\r\n"));
  EXPECT_FALSE(saida.Falhou());
  EXPECT_FALSE(saida.Fechar());
  EXPECT_TRUE(saida.Falhou());
}

TEST(ArquivoSaida, MuitoFalhaNaEscritaQueEsvaziaOBuffer) {
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem /dev/full";
  ArquivoSaida saida;
  ASSERT_TRUE(saida.Criar(cheio));
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
  if (const std::string cheio = DispositivoCheio(); !cheio.empty()) {
    ASSERT_TRUE(saida.Criar(cheio));
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
