// Runs on different threads at once, each with its own validator objects and working directory,
// give what the same runs give one after another: status, remessa number and the exact warnings
// or return file. Built also under ThreadSanitizer.
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "arquivo_fichas.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

constexpr int kLinhasDeExecucao = 8;
constexpr int kRepeticoes = 3;

enum class Entrada { kNotas, kFichas, kWebNotas, kWebFichas };

struct Tarefa {
  Entrada entrada;
  std::string arquivo;
};

// What a run leaves: its status (or the facade's answer), the remessa number, the form run's
// failure flag and the bytes of the warnings file and of the return file.
struct Resultado {
  int status = -1;
  std::string numero;
  bool grave = false;
  std::string advertencias;
  std::string retorno;

  bool operator==(const Resultado& outro) const {
    return status == outro.status && numero == outro.numero && grave == outro.grave &&
           advertencias == outro.advertencias && retorno == outro.retorno;
  }
};

void PrintTo(const Resultado& resultado, std::ostream* saida) {
  *saida << "status " << resultado.status << ", remessa " << resultado.numero << ", grave "
         << resultado.grave << ", " << resultado.advertencias.size() << " bytes de advertências, "
         << resultado.retorno.size() << " bytes de retorno";
}

double Hoje() {
  return SerialDaData(2024, 6, 30);
}

// Validates the task's file in the directory with fresh objects.
Resultado Executa(const Tarefa& tarefa, const std::filesystem::path& diretorio) {
  const std::string trabalho = diretorio.u8string();
  Resultado resultado;
  switch (tarefa.entrada) {
    case Entrada::kNotas: {
      Validacao validacao;
      validacao.Hoje = Hoje;
      resultado.status = validacao.Valida_Dados(tarefa.arquivo, resultado.numero, trabalho, 17, 3);
      break;
    }
    case Entrada::kFichas: {
      ValidacaoFichaCadastral validacao;
      validacao.Hoje = Hoje;
      resultado.status = validacao.Valida_Fichas(tarefa.arquivo, resultado.numero, trabalho, 5);
      resultado.grave = validacao.bTem_Erro_Grave;
      break;
    }
    case Entrada::kWebNotas:
    case Entrada::kWebFichas: {
      ValidacaoTarnWEB web;
      web.Hoje = Hoje;
      web.ProgramaChamador("sistema");
      resultado.status = web.Valida_TIPO(tarefa.arquivo, "/RETORNO.TXT", trabalho, resultado.numero,
                                         tarefa.entrada == Entrada::kWebNotas ? "P" : "F");
      resultado.retorno = LeBytes(trabalho + "/RETORNO.TXT");
      break;
    }
  }
  resultado.advertencias = LeBytes(trabalho + "/ADVERTENCIAS.TXT");
  return resultado;
}

// An invoice file of many groups; every third group has an item before its note.
std::string Notas(const DiretorioTemporario& onde, const std::string& nome, int grupos,
                  bool comDefeitos) {
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  for (int g = 0; g < grupos; ++g) {
    arquivo.TR01();
    if (comDefeitos && g % 3 == 0) arquivo.Novo("15");
    arquivo.TR10Valido();
    arquivo.Novo("15");
    arquivo.TR20Valido();
    arquivo.Novo("25");
    arquivo.TR98();
  }
  arquivo.TR99();
  return arquivo.Grava(onde, nome);
}

// A form file of many requests; every fourth request has a second name record for its holder.
std::string Fichas(const DiretorioTemporario& onde, const std::string& nome, int solicitacoes,
                   bool comDefeitos) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  for (int s = 0; s < solicitacoes; ++s) {
    char numero[16];
    std::snprintf(numero, sizeof numero, "%010d", s + 1);
    arquivo.TR100(numero);
    arquivo.TR110();
    arquivo.TR111();
    arquivo.TR115();
    arquivo.Pessoa("120");
    arquivo.NomePessoa("121");
    if (comDefeitos && s % 4 == 0) arquivo.NomePessoa("121");
    arquivo.TR140();
    arquivo.DaSolicitacao("199");
  }
  arquivo.Trailer();
  return arquivo.Grava(onde, nome);
}

class Concorrencia : public ::testing::Test {
 protected:
  void SetUp() override {
    // The state-registration check is set once, before any thread starts.
    DefinirVerificadorInscricao(InscricaoDeTeste);
    tarefas = {{Entrada::kNotas, Notas(entradas, "notas-1.txt", 120, true)},
               {Entrada::kFichas, Fichas(entradas, "fichas-1.txt", 80, true)},
               {Entrada::kWebNotas, Notas(entradas, "notas-2.txt", 90, true)},
               {Entrada::kWebFichas, Fichas(entradas, "fichas-2.txt", 60, true)},
               {Entrada::kNotas, Notas(entradas, "notas-3.txt", 100, false)},
               {Entrada::kFichas, Fichas(entradas, "fichas-3.txt", 70, false)},
               {Entrada::kWebNotas, Notas(entradas, "notas-4.txt", 40, false)},
               {Entrada::kWebFichas, Fichas(entradas, "fichas-4.txt", 50, true)}};
  }
  void TearDown() override { DefinirVerificadorInscricao(nullptr); }

  // A fresh working directory for one run.
  std::filesystem::path Diretorio(const std::string& nome) {
    const std::filesystem::path caminho = trabalho.Caminho() / nome;
    std::filesystem::create_directories(caminho);
    return caminho;
  }

  DiretorioTemporario entradas;
  DiretorioTemporario trabalho;
  std::vector<Tarefa> tarefas;
};

TEST_F(Concorrencia, OitoLinhasDeExecucaoDaoOMesmoQueUmaDeCadaVez) {
  ASSERT_EQ(tarefas.size(), static_cast<std::size_t>(kLinhasDeExecucao));
  std::vector<Resultado> esperados;
  for (std::size_t i = 0; i < tarefas.size(); ++i)
    esperados.push_back(Executa(tarefas[i], Diretorio("sozinha-" + std::to_string(i))));

  // What the files are expected to give, so that the comparison below is not between nothings.
  EXPECT_EQ(esperados[0].status, 1);
  EXPECT_FALSE(esperados[0].advertencias.empty());
  EXPECT_EQ(esperados[1].status, 8);
  EXPECT_FALSE(esperados[1].advertencias.empty());
  EXPECT_EQ(esperados[2].status, 0);
  EXPECT_FALSE(esperados[2].retorno.empty());
  EXPECT_EQ(esperados[4].status, 0);
  EXPECT_TRUE(esperados[4].advertencias.empty());
  EXPECT_EQ(esperados[5].status, 8);
  EXPECT_TRUE(esperados[5].advertencias.empty());
  EXPECT_EQ(esperados[6].status, 1);
  EXPECT_TRUE(esperados[6].retorno.empty());
  for (const Resultado& esperado : esperados)
    EXPECT_EQ(esperado.numero, "000001");

  // Every thread waits for all the others before its first run, so that the runs overlap.
  std::mutex trava;
  std::condition_variable sinal;
  int prontas = 0;
  std::vector<std::vector<Resultado>> obtidos(tarefas.size());
  std::vector<std::vector<std::filesystem::path>> diretorios(tarefas.size());
  for (std::size_t i = 0; i < tarefas.size(); ++i) {
    for (int r = 0; r < kRepeticoes; ++r) {
      diretorios[i].push_back(Diretorio("junta-" + std::to_string(i) + "-" + std::to_string(r)));
    }
  }
  std::vector<std::thread> linhas;
  for (std::size_t i = 0; i < tarefas.size(); ++i) {
    linhas.emplace_back([&, i] {
      {
        std::unique_lock<std::mutex> espera(trava);
        ++prontas;
        sinal.notify_all();
        sinal.wait(espera, [&] { return prontas == kLinhasDeExecucao; });
      }
      for (int r = 0; r < kRepeticoes; ++r)
        obtidos[i].push_back(Executa(tarefas[i], diretorios[i][static_cast<std::size_t>(r)]));
    });
  }
  for (std::thread& linha : linhas)
    linha.join();

  for (std::size_t i = 0; i < tarefas.size(); ++i) {
    ASSERT_EQ(obtidos[i].size(), static_cast<std::size_t>(kRepeticoes));
    for (int r = 0; r < kRepeticoes; ++r)
      EXPECT_EQ(obtidos[i][static_cast<std::size_t>(r)], esperados[i]) << i << "/" << r;
  }
}

}  // namespace
}  // namespace quorv::teste
