// The producer-invoice warnings reader (private to the library) and the reading engine that
// both readers share.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "component/files/leitor_advertencias.hpp"
#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/validacao.hpp"
#include "registro.hpp"

namespace quorv::teste {
namespace {

// An invoice input line: line number, record type and the invoice number area.
std::string LinhaNota(long long numero, std::string_view tr, std::string_view nota) {
  return Registro(160).Numero(1, 8, numero).Campo(9, 2, tr).Campo(11, 20, nota).Texto();
}

// The UTF-8 text followed by blanks up to 100 characters.
std::string Descricao(std::string_view texto) {
  std::size_t caracteres = 0;
  for (char c : texto) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++caracteres;
  }
  return std::string(texto) + std::string(100 - caracteres, ' ');
}

class LeitorNotas : public ::testing::Test {
 protected:
  void Abre(std::string_view bytes) {
    GravaBytes(caminho, bytes);
    leitor.OpenStream(caminho);
  }

  DiretorioTemporario diretorio;
  std::string caminho = diretorio.Advertencias();
  clsQuorvAdvBD leitor;
};

TEST_F(LeitorNotas, ArquivoDeUmaLinha) {
  Abre(Advertencias().Linha(201, LinhaNota(3, "10", "12345678901ABC000123"), "00000003").Texto());
  EXPECT_EQ(leitor.TR(), "10");
  EXPECT_EQ(leitor.Nota(), "12345678901ABC000123");
  EXPECT_EQ(leitor.LINHA(), 3);
  EXPECT_EQ(leitor.Descricao(), Descricao("Caractere inválido:#"));
  EXPECT_EQ(leitor.TotalRecords(), 1);
  EXPECT_EQ(leitor.RecordCount(), 2);
  EXPECT_TRUE(leitor.EndOfStream());
}

TEST_F(LeitorNotas, ArquivoVazio) {
  Abre("");
  EXPECT_EQ(leitor.TotalRecords(), 0);
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(leitor.RecordCount(), 1);
  EXPECT_EQ(leitor.TR(), "  ");
  EXPECT_EQ(leitor.Nota(), std::string(20, ' '));
  EXPECT_EQ(leitor.LINHA(), 0);
  EXPECT_EQ(leitor.Descricao(), std::string(100, ' '));
}

TEST_F(LeitorNotas, ArquivoAusente) {
  leitor.OpenStream(diretorio.Arquivo("NAOEXISTE.TXT"));
  EXPECT_EQ(leitor.TotalRecords(), 0);
  EXPECT_TRUE(leitor.EndOfStream());
  // The invoice reader raises nothing, not even for its position without a stream.
  EXPECT_EQ(leitor.RecordCount(), 0);
}

TEST_F(LeitorNotas, RegistroMaisCurtoQueTrintaCaracteres) {
  Abre("77#0#0#00000005104567#00000005\r\n");
  EXPECT_EQ(leitor.TR(), "10");
  EXPECT_EQ(leitor.Nota(), "4567" + std::string(16, ' '));
  EXPECT_EQ(leitor.LINHA(), 5);
  EXPECT_EQ(leitor.Descricao(), Descricao("Linha com tamanho Incorreto"));
}

TEST_F(LeitorNotas, CodigoSemTextoOuQueNaoENumero) {
  const std::string linha = LinhaNota(2, "01", "");
  Abre("0#0#0#" + linha + "#00000002\r\n" + "99#0#0#" + linha + "#00000002\r\n" + "x#0#0#" + linha +
       "#00000002\r\n" + "204#0#0#" + linha + "#00000002\r\n");
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(leitor.Descricao(), Descricao("Erro não cadastrado")) << i;
    leitor.MoveNext();
  }
}

TEST_F(LeitorNotas, TextoDoCodigo53IgualAoDo20) {
  Abre(Advertencias().Linha(53, LinhaNota(4, "20", ""), "00000004").Texto());
  EXPECT_EQ(leitor.Descricao(),
            Descricao("Dígito verificador do CNPJ/CPF do Destinatário inválido"));
}

// A real run writes its warnings with ";": the reader, splitting at "#", gets the code's text
// and nothing else.
TEST_F(LeitorNotas, AdvertenciasDeUmaExecucaoComPontoEVirgula) {
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
  Validacao validacao;
  validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  std::string numero;
  ASSERT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numero, diretorio.Texto(), 0, 0, "",
                                   "", ";"),
            8);
  leitor.OpenStream(caminho);
  EXPECT_EQ(leitor.TotalRecords(), 1);
  EXPECT_EQ(leitor.TR(), "  ");
  EXPECT_EQ(leitor.Nota(), std::string(20, ' '));
  EXPECT_EQ(leitor.LINHA(), 0);
  EXPECT_EQ(leitor.Descricao(), Descricao("Caractere inválido:#"));
  EXPECT_TRUE(leitor.EndOfStream());
}

TEST_F(LeitorNotas, AdvertenciasDeUmaExecucaoComCerquilha) {
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
  Validacao validacao;
  validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  std::string numero;
  ASSERT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numero, diretorio.Texto()), 8);
  leitor.OpenStream(caminho);
  EXPECT_EQ(leitor.TotalRecords(), 1);
  EXPECT_EQ(leitor.TR(), "10");
  EXPECT_EQ(leitor.Nota(), "12345678901ABC000123");
  EXPECT_EQ(leitor.LINHA(), 3);
  EXPECT_EQ(leitor.Descricao(), Descricao("Caractere inválido:#"));
}

// A catalogue of the tests: one text longer than the width, with accented characters.
std::string_view TextoLongo(int codigo) {
  static const std::string longo = std::string(95, 'a') + "çãõéíóúâ" + std::string(17, 'b');
  return codigo == 1 ? std::string_view(longo) : std::string_view("curto");
}

TEST(LeitorAdvertencias, DescricaoMaiorQueALarguraECortadaEmCaracteres) {
  DiretorioTemporario diretorio;
  GravaBytes(diretorio.Advertencias(), "1#0#0#x#1\r\n2#0#0#x#2\r\n");
  LeitorAdvertencias leitor(FormatoAdvertencias{{9, 2}, {11, 20}, &TextoLongo});
  leitor.Abrir(diretorio.Advertencias());
  EXPECT_EQ(leitor.Descricao(), std::string(95, 'a') + "çãõéí");
  leitor.Avancar();
  EXPECT_EQ(leitor.Descricao(), "curto" + std::string(95, ' '));
}

TEST(LeitorAdvertencias, LinhaEnormeLidaPeloComeco) {
  DiretorioTemporario diretorio;
  // The code and the start of the record fit the reader's first bytes; the rest is long.
  GravaBytes(diretorio.Advertencias(), "77#0#0#0000000910" + std::string(1000000, 'X') +
                                           "#00000009\r\n" + "78#0#0#0000001099#00000010\r\n");
  clsQuorvAdvBD leitor;
  leitor.OpenStream(diretorio.Advertencias());
  EXPECT_EQ(leitor.TotalRecords(), 2);
  EXPECT_EQ(leitor.TR(), "10");
  EXPECT_EQ(leitor.Nota(), std::string(20, 'X'));
  EXPECT_EQ(leitor.Descricao(), Descricao("Linha com tamanho Incorreto"));
  leitor.MoveNext();
  EXPECT_EQ(leitor.TR(), "99");
  EXPECT_EQ(leitor.LINHA(), 10);
  EXPECT_TRUE(leitor.EndOfStream());
}

}  // namespace
}  // namespace quorv::teste
