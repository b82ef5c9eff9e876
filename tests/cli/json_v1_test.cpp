// The JSON objects of format 1 as the module writes them, byte for byte, to any writer: streamed
// in pieces of bounded size, and stopped at the first write that fails.
#include "json_v1.hpp"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"

namespace quorv::teste {
namespace {

using ferramenta::Erro;
using ferramenta::ResultadoMensagem;
using ferramenta::ResultadoValidacao;
using ferramenta::ResultadoWeb;
using ferramenta::ResumoLote;
using ferramenta::Tipo;
namespace json_v1 = ferramenta::json_v1;

// A warnings line of an invoice run: code, keys, the 160-character record, the line number.
std::string LinhaDeAdvertencia(int codigo, const std::string& tr, int linha, char separador) {
  std::string registro = std::to_string(100000000 + linha).substr(1) + tr;
  registro.resize(160, ' ');
  char numero[16];
  std::snprintf(numero, sizeof numero, "%08d", linha);
  const std::string s(1, separador);
  return std::to_string(codigo) + s + "0" + s + "0" + s + registro + s + numero + "\r\n";
}

// A warnings file of `quantas` warnings 153, one per line from 1.
void GravaAdvertencias(const std::string& caminho, int quantas) {
  std::ofstream arquivo(caminho, std::ios::binary);
  for (int i = 1; i <= quantas; ++i)
    arquivo << LinhaDeAdvertencia(153, "15", i, '#');
}

class JsonV1 : public ::testing::Test {
 protected:
  std::string Escreve(const std::function<bool(json_v1::Escritor&)>& escreve) {
    std::ostringstream saida;
    json_v1::Escritor escritor(saida);
    EXPECT_TRUE(escreve(escritor));
    return saida.str();
  }

  DiretorioTemporario diretorio;
};

TEST_F(JsonV1, Erro) {
  EXPECT_EQ(Escreve([](json_v1::Escritor& escritor) {
              return json_v1::EscreveErro(escritor, Erro{"uso", "opção desconhecida: --x"}, 2);
            }),
            "{\"formato\":1,\"objeto\":\"erro\",\"erro\":{\"tipo\":\"uso\",\"mensagem\":\"opção "
            "desconhecida: --x\"},\"codigo_saida\":2}\n");
  EXPECT_EQ(Escreve([](json_v1::Escritor& escritor) {
              return json_v1::EscreveErro(escritor, Erro{"entrada_inacessivel", "m"}, 3, "a.txt");
            }),
            "{\"formato\":1,\"objeto\":\"erro\",\"arquivo\":\"a.txt\",\"erro\":{\"tipo\":"
            "\"entrada_inacessivel\",\"mensagem\":\"m\"},\"codigo_saida\":3}\n");
}

TEST_F(JsonV1, MensagemEResumoDoLote) {
  ResultadoMensagem mensagem;
  mensagem.tipo = Tipo::kFichas;
  mensagem.codigo = 92;
  mensagem.mensagem = "Código do CNAE Fiscal inválido ";
  EXPECT_EQ(Escreve([&](json_v1::Escritor& escritor) {
              return json_v1::EscreveMensagem(escritor, mensagem);
            }),
            "{\"formato\":1,\"objeto\":\"mensagem\",\"tipo\":\"fichas\",\"codigo\":92,"
            "\"mensagem\":\"Código do CNAE Fiscal inválido \",\"conhecido\":true,"
            "\"codigo_saida\":0}\n");
  ResumoLote resumo{8, 5, 2, 1, 1234, 3};
  EXPECT_EQ(Escreve([&](json_v1::Escritor& escritor) {
              return json_v1::EscreveResumoLote(escritor, resumo);
            }),
            "{\"formato\":1,\"objeto\":\"lote\",\"arquivos\":8,\"aceitos\":5,"
            "\"com_advertencias\":2,\"com_falha\":1,\"total_advertencias\":1234,"
            "\"codigo_saida\":3}\n");
}

TEST_F(JsonV1, ValidacaoComAsAdvertenciasDoArquivo) {
  const std::string advertencias = diretorio.Arquivo("ADVERTENCIAS.TXT");
  GravaBytes(advertencias,
             LinhaDeAdvertencia(107, "10", 3, ';') + LinhaDeAdvertencia(77, "99", 12, ';'));
  ResultadoValidacao resultado;
  resultado.arquivo = "remessa \"A\".txt";
  resultado.tipo = Tipo::kNotas;
  resultado.status = 8;
  resultado.numeroRemessa = "000001";
  resultado.diretorio = diretorio.Texto();
  resultado.caminhoAdvertencias = advertencias;
  resultado.separador = ";";
  resultado.diagnostico = ferramenta::Diagnostico{"utf8", "converta"};
  resultado.codigoSaida = 1;
  EXPECT_EQ(Escreve([&](json_v1::Escritor& escritor) {
              return json_v1::EscreveValidacao(escritor, resultado);
            }),
            "{\"formato\":1,\"objeto\":\"validacao\",\"arquivo\":\"remessa \\\"A\\\".txt\","
            "\"tipo\":\"notas\",\"status\":8,\"significado\":\"erro de estrutura; validação "
            "interrompida na linha da advertência\",\"aceito\":false,\"numero_remessa\":"
            "\"000001\",\"diretorio\":\"" +
                diretorio.Texto() + "\",\"arquivo_advertencias\":\"" + advertencias +
                "\",\"advertencias\":[{\"codigo\":107,\"linha\":3,\"tr\":\"10\",\"mensagem\":"
                "\"Tipo de Nota de Produtor inválida\"},{\"codigo\":77,\"linha\":12,\"tr\":"
                "\"99\",\"mensagem\":\"Linha com tamanho Incorreto\"}],\"total_advertencias\":2,"
                "\"diagnostico\":{\"tipo\":\"utf8\",\"mensagem\":\"converta\"},"
                "\"codigo_saida\":1}\n");
}

TEST_F(JsonV1, WebSemTipoComErroETextoQueNaoEUtf8) {
  ResultadoWeb resultado;
  resultado.arquivo = "a\xE7\xE3o.txt";
  resultado.resultado = true;
  resultado.diretorio = ".";
  resultado.erro = Erro{"entrada_inacessivel", "arquivo não encontrado"};
  resultado.codigoSaida = 3;
  EXPECT_EQ(Escreve([&](json_v1::Escritor& escritor) {
              return json_v1::EscreveWeb(escritor, resultado);
            }),
            "{\"formato\":1,\"objeto\":\"web\",\"arquivo\":\"a\xEF\xBF\xBD\xEF\xBF\xBDo.txt\","
            "\"tipo\":\"nenhum\",\"resultado\":true,\"aceito\":false,\"numero_remessa\":\"\","
            "\"diretorio\":\".\",\"erro\":{\"tipo\":\"entrada_inacessivel\",\"mensagem\":"
            "\"arquivo não encontrado\"},\"codigo_saida\":3}\n");
}

// A file of many warnings goes out in pieces of at most the writer's buffer and a warning, never
// as one whole object.
TEST_F(JsonV1, AdvertenciasSaemEmPedacosLimitados) {
  const std::string advertencias = diretorio.Arquivo("ADVERTENCIAS.TXT");
  GravaAdvertencias(advertencias, 20000);
  ResultadoValidacao resultado;
  resultado.caminhoAdvertencias = advertencias;
  resultado.codigoSaida = 1;
  std::size_t maior = 0;
  std::size_t total = 0;
  std::size_t pedacos = 0;
  json_v1::Escritor escritor([&](std::string_view bytes) {
    maior = std::max(maior, bytes.size());
    total += bytes.size();
    ++pedacos;
    return true;
  });
  EXPECT_TRUE(json_v1::EscreveValidacao(escritor, resultado));
  EXPECT_GT(total, 20000u * 80);
  EXPECT_GT(pedacos, 10u);
  EXPECT_LT(maior, 64u * 1024 + 1024);
}

// The first write that fails stops the object: the writer is not called again, and the answer
// is false.
TEST_F(JsonV1, EscritaQueFalhaParaTudo) {
  const std::string advertencias = diretorio.Arquivo("ADVERTENCIAS.TXT");
  GravaAdvertencias(advertencias, 5000);
  ResultadoValidacao resultado;
  resultado.caminhoAdvertencias = advertencias;
  int chamadas = 0;
  json_v1::Escritor escritor([&](std::string_view) { return ++chamadas < 2; });
  EXPECT_FALSE(json_v1::EscreveValidacao(escritor, resultado));
  EXPECT_TRUE(escritor.Falhou());
  EXPECT_EQ(chamadas, 2);
  EXPECT_FALSE(json_v1::EscreveErro(escritor, Erro{"uso", "x"}, 2));
  EXPECT_EQ(chamadas, 2);
}

TEST_F(JsonV1, FluxoNumDispositivoCheioFalha) {
  std::error_code erro;
  if (!std::filesystem::is_character_file("/dev/full", erro)) GTEST_SKIP() << "sem /dev/full";
  std::ofstream cheio("/dev/full");
  json_v1::Escritor escritor(cheio);
  EXPECT_FALSE(json_v1::EscreveVersao(escritor, "1.1.0.1"));
  EXPECT_TRUE(escritor.Falhou());
}

}  // namespace
}  // namespace quorv::teste
