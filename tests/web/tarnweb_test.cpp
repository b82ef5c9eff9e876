// The web facade: BreakString, the invoice entry point with its fixed arguments and the return
// file compared byte for byte with files written by hand from the layout.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"

namespace quorv::teste {
namespace {

std::string Esperado(std::string_view nome) {
  const std::string caminho = std::string(QUORV_DADOS_WEB) + "/" + std::string(nome);
  const std::string bytes = LeBytes(caminho);
  EXPECT_FALSE(bytes.empty()) << caminho;
  return bytes;
}

struct CasoQuebra {
  std::string texto;
  int16_t largura;
  std::vector<std::string> pedacos;  // pieces 1, 2, 3, ...
};

TEST(BreakString, PedacosDoTexto) {
  const std::vector<CasoQuebra> casos = {
      // No blank at all: nothing, however long the word.
      {"abcdefghij", 5, {"", "", ""}},
      {"abc", 10, {"", ""}},
      {"", 10, {"", ""}},
      // Tested at 3, 8 and 13 characters against the width of 8.
      {"ab cdef ghij", 8, {"ab cdef", "ghij", ""}},
      // A first word as long as the width does not fit the empty line either: piece 1 is
      // empty and the word starts piece 2.
      {"abcde fg", 5, {"", "abcde", "fg", ""}},
      // The line has one character less room than the width: 8 characters do not fit in 8.
      {"abc defg", 8, {"abc", "defg", ""}},
      {"abc defg", 9, {"abc defg", ""}},
      // A long word fills the line to the width; its rest goes whole to the next line.
      {"a bcdefghijk", 5, {"a bcd", "efghijk", ""}},
      {"a bcdefghijklmnopqrstu", 5, {"a bcd", "efghijklmnopqrstu", ""}},
      {"a bcdefghijklmnop xy", 5, {"a bcd", "efghijklmnop", "xy", ""}},
      {"abcdefgh ij", 5, {"abcde", "fgh", "ij", ""}},
      // Two blanks in a row hold an empty word.
      {"ab  cd", 10, {"ab  cd", ""}},
      {"ab  cd", 4, {"ab", "cd", ""}},
      // Widths count characters, not bytes.
      {"ação éé", 7, {"ação", "éé", ""}},
      {"é çãõáéíóú", 5, {"é çãõ", "áéíóú", ""}},
      {"Bloco de registros não foi fechado corretamente ( falta TR98 ou TR01 )",
       33,
       {"Bloco de registros não foi", "fechado corretamente ( falta", "TR98 ou TR01 )", ""}},
  };
  const ValidacaoTarnWEB web;
  for (const CasoQuebra& caso : casos) {
    for (std::size_t i = 0; i < caso.pedacos.size(); ++i) {
      EXPECT_EQ(web.BreakString(caso.texto, static_cast<int16_t>(i + 1), caso.largura),
                caso.pedacos[i])
          << caso.texto << " / " << caso.largura << " / " << i + 1;
    }
  }
}

TEST(BreakString, PedacoZeroOuLarguraNegativaDaoVazio) {
  const ValidacaoTarnWEB web;
  EXPECT_EQ(web.BreakString("ab cd", 0, 10), "");
  EXPECT_EQ(web.BreakString("ab cd", -1, 10), "");
  EXPECT_EQ(web.BreakString("ab cd", 1, -1), "");
  EXPECT_EQ(web.BreakString("ab cd", 1, 0), "");
}

// A line that already holds a rest longer than the width cannot take the cut of another long
// word: from that line on the answer is empty.
TEST(BreakString, RestoLongoSeguidoDePalavraLonga) {
  const ValidacaoTarnWEB web;
  EXPECT_EQ(web.BreakString("a bcdefghij klmnopqrs", 1, 5), "a bcd");
  EXPECT_EQ(web.BreakString("a bcdefghij klmnopqrs", 2, 5), "");
  EXPECT_EQ(web.BreakString("a bcdefghij klmnopqrs", 3, 5), "");
}

class FachadaNotas : public ::testing::Test {
 protected:
  FachadaNotas() {
    web.Hoje = [] { return SerialDaData(2024, 6, 30); };
  }

  // Validates the file built so far; the return file goes to the working directory.
  bool Valida() {
    return web.Valida_Dados_Tarnweb(arquivo.Grava(entrada), "/RETORNO.TXT", trabalho.Texto(),
                                    numero);
  }

  std::string Retorno() const { return LeBytes(trabalho.Arquivo("RETORNO.TXT")); }
  bool TemRetorno() const {
    return std::filesystem::exists(std::filesystem::u8path(trabalho.Arquivo("RETORNO.TXT")));
  }

  // A TR 15 before any group and a group without notes: structure warnings that only a full
  // validation reports.
  void ArquivoComErrosDeEstrutura() {
    arquivo.CabecalhoV1();
    arquivo.Novo("15");
    arquivo.TR01();
    arquivo.TR98();
    arquivo.TR99();
  }

  DiretorioTemporario entrada;
  DiretorioTemporario trabalho;
  ArquivoNotas arquivo;
  ValidacaoTarnWEB web;
  std::string numero;
};

TEST_F(FachadaNotas, ArquivoLimpoRespondeTrueSemRetorno) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_TRUE(Valida());
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
  EXPECT_EQ(numero, "000001");
}

TEST_F(FachadaNotas, CaractereInvalidoNaNota) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
  EXPECT_FALSE(Valida());
  EXPECT_EQ(Retorno(), Esperado("retorno_notas_caractere.txt"));
  EXPECT_FALSE(trabalho.TemAdvertencias());
  EXPECT_EQ(numero, "000001");
}

TEST_F(FachadaNotas, TrailerComDuasAdvertencias) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10");
  arquivo.TR98();
  arquivo.TR99().Campo(35, 25, "OUTRA CIDADE").Numero(84, 8, 5);
  EXPECT_FALSE(Valida());
  EXPECT_EQ(Retorno(), Esperado("retorno_notas_trailer.txt"));
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaNotas, SemProgramaChamadorSoContaOsRegistros) {
  ArquivoComErrosDeEstrutura();
  EXPECT_TRUE(Valida());
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaNotas, ProgramaChamadorLigaAValidacaoCompleta) {
  ArquivoComErrosDeEstrutura();
  web.ProgramaChamador("web");
  EXPECT_FALSE(Valida());
  EXPECT_EQ(Retorno(), Esperado("retorno_notas_estrutura.txt"));
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaNotas, ProgramaChamadorAparadoEMaiusculo) {
  // " a0 " is stored as "A0", the origin that only counts.
  ArquivoComErrosDeEstrutura();
  web.ProgramaChamador(" a0 ");
  EXPECT_TRUE(Valida());
  EXPECT_FALSE(TemRetorno());
}

TEST_F(FachadaNotas, TipoArquivoNaoMudaAValidacaoDeNotas) {
  ArquivoComErrosDeEstrutura();
  web.TipoArquivo("RET");
  EXPECT_TRUE(Valida());
  EXPECT_FALSE(TemRetorno());
  web.ProgramaChamador("WEB");
  EXPECT_FALSE(Valida());
  EXPECT_EQ(Retorno(), Esperado("retorno_notas_estrutura.txt"));
}

TEST_F(FachadaNotas, RetornoSubstituiArquivoAnterior) {
  GravaBytes(trabalho.Arquivo("RETORNO.TXT"), std::string(5000, 'x'));
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
  EXPECT_FALSE(Valida());
  EXPECT_EQ(Retorno(), Esperado("retorno_notas_caractere.txt"));
}

TEST_F(FachadaNotas, CaminhoDoRetornoEAConcatenacaoSimples) {
  // Without a separator of the caller's, the name is glued to the directory's last name.
  const std::filesystem::path pasta = trabalho.Caminho() / "trab";
  std::filesystem::create_directory(pasta);
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(11, 20, "12345678901ABC000123").Campo(150, 1, "#");
  EXPECT_FALSE(
      web.Valida_Dados_Tarnweb(arquivo.Grava(entrada), "RETORNO.TXT", pasta.u8string(), numero));
  EXPECT_EQ(LeBytes(trabalho.Arquivo("trabRETORNO.TXT")), Esperado("retorno_notas_caractere.txt"));
  EXPECT_FALSE(std::filesystem::exists(pasta / "RETORNO.TXT"));
  EXPECT_FALSE(std::filesystem::exists(pasta / "ADVERTENCIAS.TXT"));
}

TEST_F(FachadaNotas, RetornoQueNaoPodeSerCriadoENadaEscreve) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(150, 1, "#");
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(arquivo.Grava(entrada), "/nao-ha/RETORNO.TXT",
                                        trabalho.Texto(), numero));
  EXPECT_FALSE(trabalho.TemAdvertencias());
  EXPECT_FALSE(std::filesystem::exists(trabalho.Caminho() / "nao-ha"));
  EXPECT_FALSE(TemRetorno());
}

TEST_F(FachadaNotas, ArquivoAusenteRespondeTrue) {
  // The run ends with 9 and leaves no warnings file: nothing to report.
  EXPECT_TRUE(web.Valida_Dados_Tarnweb(entrada.Arquivo("ausente.txt"), "/RETORNO.TXT",
                                       trabalho.Texto(), numero));
  EXPECT_FALSE(TemRetorno());
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(FachadaNotas, DiretorioDeTrabalhoAusenteRespondeTrue) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.Novo("10").Campo(150, 1, "#");
  EXPECT_TRUE(web.Valida_Dados_Tarnweb(arquivo.Grava(entrada), "/RETORNO.TXT",
                                       trabalho.Arquivo("nao-ha"), numero));
  EXPECT_FALSE(std::filesystem::exists(trabalho.Caminho() / "nao-ha"));
}

}  // namespace
}  // namespace quorv::teste
