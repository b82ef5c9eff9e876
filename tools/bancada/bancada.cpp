// quorvvalida-bancada: measures whole-file validation through the command-line tool against the
// floor of reading the file (a one-rule mawk scan), and the cost of the progress events.
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fmt/core.h>
#include <CLI/CLI.hpp>

#include "processo.hpp"
#include "quorvvalida/quorvvalida.hpp"

namespace {

namespace fs = std::filesystem;
using quorv::bancada::Executa;
using quorv::bancada::Medida;

struct Opcoes {
  std::string programa;
  std::string gerador;
  std::string inscricaoLib;
  std::string mawk = "mawk";
  std::string diretorio = "medicao";
  std::uint64_t linhas = 1000000;
  int repeticoes = 5;
  bool gigabyte = false;
  bool lote = false;
  bool advertencias = false;
};

// One kind of file: its generator's name, its line width and the tool's command.
struct Tipo {
  const char* nome;
  int largura;
};
constexpr Tipo kNotas{"notas", 160};
constexpr Tipo kFichas{"fichas", 260};

// What the table shows of one file.
struct Resultado {
  std::string arquivo;
  std::uint64_t linhas = 0;
  std::uint64_t bytes = 0;
  double validacao = 0;
  double mawk = 0;
  // The median of the ratios of each validation to the mawk scan run right after it: a slower
  // moment of the machine weighs on both.
  double razao = 0;
  std::uint64_t advertencias = 0;
  long memoriaKiB = 0;
};

double Mediana(std::vector<double> valores) {
  std::sort(valores.begin(), valores.end());
  const std::size_t meio = valores.size() / 2;
  return valores.size() % 2 == 1 ? valores[meio] : (valores[meio - 1] + valores[meio]) / 2;
}

// Lines of a file: its line feeds, plus a last line without one.
std::uint64_t ContaLinhas(const fs::path& caminho) {
  std::ifstream arquivo(caminho, std::ios::binary);
  std::vector<char> bloco(1 << 20);
  std::uint64_t linhas = 0;
  char ultimo = '\n';
  while (arquivo.read(bloco.data(), static_cast<std::streamsize>(bloco.size())) ||
         arquivo.gcount() > 0) {
    const auto lidos = static_cast<std::size_t>(arquivo.gcount());
    linhas += static_cast<std::uint64_t>(std::count(bloco.data(), bloco.data() + lidos, '\n'));
    ultimo = bloco[lidos - 1];
  }
  return ultimo == '\n' ? linhas : linhas + 1;
}

std::uint64_t Tamanho(const fs::path& caminho) {
  std::error_code erro;
  const auto tamanho = fs::file_size(caminho, erro);
  return erro ? 0 : tamanho;
}

void Gera(const Opcoes& opcoes, const Tipo& tipo, bool defeitos, std::uint64_t linhas,
          const fs::path& destino) {
  std::vector<std::string> argumentos = {opcoes.gerador,         tipo.nome, "-n",
                                         std::to_string(linhas), "-o",      destino.string()};
  if (defeitos) argumentos.emplace_back("--defeitos");
  if (Executa(argumentos).codigo != 0) {
    throw std::runtime_error("o gerador falhou ao escrever " + destino.string());
  }
}

// How a file is measured: against the mawk scan or alone, and whether the tool may refuse it as
// a file it cannot validate (exit code 3: a form line whose record type is not a number).
struct Modo {
  bool comMawk;
  bool podeRecusar;
};
constexpr Modo kContraMawk{true, false};
constexpr Modo kSozinho{false, false};
constexpr Modo kRecusavel{false, true};

// The tool's arguments, with the state-registration library when one is given.
std::vector<std::string> ComInscricao(const Opcoes& opcoes, std::vector<std::string> argumentos) {
  if (!opcoes.inscricaoLib.empty()) {
    argumentos.emplace_back("--inscricao-lib");
    argumentos.push_back(opcoes.inscricaoLib);
  }
  return argumentos;
}

// One run of the tool on the file, as a user runs it with -q.
Medida Valida(const Opcoes& opcoes, const Tipo& tipo, const fs::path& arquivo,
              const fs::path& trabalho, Modo modo) {
  const Medida medida = Executa(ComInscricao(
      opcoes, {opcoes.programa, tipo.nome, arquivo.string(), "-q", "-d", trabalho.string()}));
  if (medida.codigo != 0 && medida.codigo != 1 && !(modo.podeRecusar && medida.codigo == 3)) {
    throw std::runtime_error("quorvvalida não validou " + arquivo.string() + " (código " +
                             std::to_string(medida.codigo) + ")");
  }
  return medida;
}

// The floor: a one-rule scan of every line by mawk.
Medida Varre(const Opcoes& opcoes, const Tipo& tipo, const fs::path& arquivo) {
  // Lines end in CR LF, which mawk keeps but for the LF.
  const std::string regra = fmt::format("length($0) != {}", tipo.largura + 1);
  return Executa({opcoes.mawk, regra, arquivo.string()});
}

Resultado Mede(const Opcoes& opcoes, const Tipo& tipo, const fs::path& arquivo, int repeticoes,
               Modo modo) {
  const fs::path trabalho = fs::path(opcoes.diretorio) / (std::string("trabalho-") + tipo.nome);
  fs::create_directories(trabalho);
  Resultado resultado;
  resultado.arquivo = arquivo.filename().string();
  resultado.linhas = ContaLinhas(arquivo);
  resultado.bytes = Tamanho(arquivo);
  std::vector<double> validacoes;
  std::vector<double> varreduras;
  std::vector<double> razoes;
  const fs::path advertencias = trabalho / "ADVERTENCIAS.TXT";
  for (int i = 0; i < repeticoes; ++i) {
    // Each run starts as a run in a working directory of its own does: without the warnings of
    // the run before, and with what that run wrote already out of the machine's write cache.
    fs::remove(advertencias);
    sync();
    const Medida medida = Valida(opcoes, tipo, arquivo, trabalho, modo);
    validacoes.push_back(medida.segundos);
    resultado.memoriaKiB = std::max(resultado.memoriaKiB, medida.memoriaKiB);
    if (!modo.comMawk) continue;
    varreduras.push_back(Varre(opcoes, tipo, arquivo).segundos);
    razoes.push_back(validacoes.back() / varreduras.back());
  }
  resultado.validacao = Mediana(validacoes);
  if (modo.comMawk) {
    resultado.mawk = Mediana(varreduras);
    resultado.razao = Mediana(razoes);
  }
  resultado.advertencias = fs::exists(advertencias) ? ContaLinhas(advertencias) : 0;
  return resultado;
}

// The progress events' cost, measured in the process: the same file validated with no host
// listening and with a host that counts every event, in pairs run one right after the other
// (each side first in every other pair), four times as many pairs as the other measures have
// runs.
// The cost is the median of the pairs' differences in processor time: a slower moment of the
// machine weighs on both runs of a pair.
struct CustoEventos {
  const char* tipo;
  double sem = 0;
  double com = 0;
  double custo = 0;
  std::uint64_t eventos = 0;
};

double TempoDeProcessador() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

CustoEventos MedeEventos(const Opcoes& opcoes, const Tipo& tipo, const fs::path& arquivo) {
  const fs::path trabalho = fs::path(opcoes.diretorio) / "trabalho-eventos";
  fs::create_directories(trabalho);
  CustoEventos custo{tipo.nome};
  std::vector<double> sem;
  std::vector<double> com;
  for (int i = 0; i < 4 * opcoes.repeticoes; ++i) {
    // Each side runs first in every other pair.
    for (const bool segundo : {false, true}) {
      const bool ouvinte = (i % 2 == 0) == segundo;
      std::uint64_t eventos = 0;
      std::function<void(double&)> ouve;
      if (ouvinte) ouve = [&eventos](double&) { ++eventos; };
      std::string numero;
      const double inicio = TempoDeProcessador();
      if (tipo.largura == kNotas.largura) {
        quorv::Validacao validacao;
        validacao.Progress = ouve;
        validacao.Valida_Dados(arquivo.string(), numero, trabalho.string());
      } else {
        quorv::ValidacaoFichaCadastral validacao;
        validacao.FichaProgress = ouve;
        validacao.Valida_Fichas(arquivo.string(), numero, trabalho.string());
      }
      (ouvinte ? com : sem).push_back(TempoDeProcessador() - inicio);
      if (ouvinte) custo.eventos = eventos;
    }
  }
  std::vector<double> diferencas;
  for (std::size_t i = 0; i < sem.size(); ++i)
    diferencas.push_back((com[i] - sem[i]) / sem[i]);
  custo.sem = Mediana(sem);
  custo.com = Mediana(com);
  custo.custo = Mediana(diferencas);
  return custo;
}

// A batch of files validated in one call on one thread and on two: paired runs, each side first
// in every other pair; the speed-up is the median of the pairs' ratios. Measured twice: with the
// state-registration library, whose calls from both threads take turns under one lock, and with
// every registration accepted without it.
struct Lote {
  std::string registros;
  std::size_t arquivos = 0;
  std::uint64_t linhas = 0;
  double umaTarefa = 0;
  double duasTarefas = 0;
  double aceleracao = 0;
};

Lote MedeLote(const Opcoes& opcoes, bool comBiblioteca) {
  constexpr std::size_t kArquivos = 8;
  constexpr std::uint64_t kLinhas = 100000;
  const fs::path diretorio = fs::path(opcoes.diretorio) / "lote";
  fs::create_directories(diretorio);
  std::vector<std::string> arquivos;
  for (std::size_t i = 0; i < kArquivos; ++i) {
    const fs::path arquivo = diretorio / fmt::format("notas-{}-{}.txt", kLinhas, i + 1);
    if (!fs::exists(arquivo)) Gera(opcoes, kNotas, false, kLinhas, arquivo);
    arquivos.push_back(arquivo.string());
  }
  const fs::path trabalho = fs::path(opcoes.diretorio) / "trabalho-lote";
  fs::create_directories(trabalho);
  const auto valida = [&](int tarefas) {
    std::vector<std::string> argumentos = {opcoes.programa, "notas"};
    argumentos.insert(argumentos.end(), arquivos.begin(), arquivos.end());
    for (const std::string& argumento : {std::string("-q"), std::string("-d"), trabalho.string(),
                                         std::string("-j"), std::to_string(tarefas)})
      argumentos.push_back(argumento);
    if (!comBiblioteca) argumentos.emplace_back("--sem-verificar-inscricao");
    sync();
    const Medida medida =
        Executa(comBiblioteca ? ComInscricao(opcoes, std::move(argumentos)) : argumentos);
    if (medida.codigo != 0) {
      throw std::runtime_error("o lote não foi aceito (código " + std::to_string(medida.codigo) +
                               ")");
    }
    return medida.segundos;
  };
  std::vector<double> uma;
  std::vector<double> duas;
  std::vector<double> razoes;
  for (int i = 0; i < opcoes.repeticoes; ++i) {
    if (i % 2 == 0) {
      uma.push_back(valida(1));
      duas.push_back(valida(2));
    } else {
      duas.push_back(valida(2));
      uma.push_back(valida(1));
    }
    razoes.push_back(uma.back() / duas.back());
  }
  Lote lote;
  lote.registros = comBiblioteca ? "pela biblioteca" : "todos aceitos";
  lote.arquivos = kArquivos;
  lote.linhas = kLinhas;
  lote.umaTarefa = Mediana(uma);
  lote.duasTarefas = Mediana(duas);
  lote.aceleracao = Mediana(razoes);
  return lote;
}

// The peak memory of the tool listing, in JSON, the warnings of the faulty invoice file, and of
// the validation that prints them in JSON.
struct MemoriaJson {
  std::uint64_t bytesEntrada = 0;
  std::uint64_t bytesAdvertencias = 0;
  std::uint64_t advertencias = 0;
  long validacaoKiB = 0;
  long listaKiB = 0;
};

MemoriaJson MedeMemoriaJson(const Opcoes& opcoes) {
  const fs::path defeitos =
      fs::path(opcoes.diretorio) / fmt::format("notas-com-defeitos-{}.txt", opcoes.linhas);
  if (!fs::exists(defeitos)) Gera(opcoes, kNotas, true, opcoes.linhas, defeitos);
  const fs::path trabalho = fs::path(opcoes.diretorio) / "trabalho-json";
  fs::create_directories(trabalho);
  const std::vector<std::string> validacao = ComInscricao(
      opcoes, {opcoes.programa, "notas", defeitos.string(), "--json", "-d", trabalho.string()});
  MemoriaJson memoria;
  memoria.bytesEntrada = Tamanho(defeitos);
  const fs::path advertencias = trabalho / "ADVERTENCIAS.TXT";
  for (int i = 0; i < opcoes.repeticoes; ++i) {
    const Medida medida = Executa(validacao);
    if (medida.codigo != 1) throw std::runtime_error("a validação em JSON não achou advertências");
    memoria.validacaoKiB = std::max(memoria.validacaoKiB, medida.memoriaKiB);
    const Medida lista =
        Executa({opcoes.programa, "advertencias", "notas", advertencias.string(), "--json"});
    if (lista.codigo != 0) throw std::runtime_error("a lista das advertências falhou");
    memoria.listaKiB = std::max(memoria.listaKiB, lista.memoriaKiB);
  }
  memoria.bytesAdvertencias = Tamanho(advertencias);
  memoria.advertencias = ContaLinhas(advertencias);
  return memoria;
}

std::string Maquina() {
  std::ifstream cpuinfo("/proc/cpuinfo");
  std::string linha;
  std::string modelo = "processador desconhecido";
  while (std::getline(cpuinfo, linha)) {
    if (linha.rfind("model name", 0) == 0) {
      modelo = linha.substr(linha.find(':') + 2);
      break;
    }
  }
  utsname sistema{};
  uname(&sistema);
  return fmt::format("{}, {} núcleos, {} {}", modelo, std::thread::hardware_concurrency(),
                     sistema.sysname, sistema.release);
}

double MiB(long kib) {
  return static_cast<double>(kib) / 1024.0;
}

void ImprimeTabela(const std::vector<Resultado>& resultados) {
  fmt::print(
      "| arquivo | linhas | MB | validação (s) | mawk (s) | razão | linhas/s | MB/s | "
      "advertências | advertências/s | memória máx. (MiB) |\n"
      "|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const Resultado& r : resultados) {
    const double mb = static_cast<double>(r.bytes) / 1e6;
    const std::string mawk = r.mawk > 0 ? fmt::format("{:.3f}", r.mawk) : "-";
    const std::string razao = r.mawk > 0 ? fmt::format("{:.2f}", r.razao) : "-";
    fmt::print("| {} | {} | {:.1f} | {:.3f} | {} | {} | {:.0f} | {:.1f} | {} | {:.0f} | {:.1f} |\n",
               r.arquivo, r.linhas, mb, r.validacao, mawk, razao,
               static_cast<double>(r.linhas) / r.validacao, mb / r.validacao, r.advertencias,
               static_cast<double>(r.advertencias) / r.validacao, MiB(r.memoriaKiB));
  }
}

int Executa(const Opcoes& opcoes) {
  if (!opcoes.inscricaoLib.empty() && !quorv::CarregarBibliotecaInscricao(opcoes.inscricaoLib)) {
    throw std::runtime_error("não foi possível carregar " + opcoes.inscricaoLib);
  }
  const fs::path diretorio = opcoes.diretorio;
  fs::create_directories(diretorio);

  std::vector<Resultado> resultados;
  std::vector<CustoEventos> eventos;
  for (const Tipo& tipo : {kNotas, kFichas}) {
    const fs::path limpo = diretorio / fmt::format("{}-{}.txt", tipo.nome, opcoes.linhas);
    const fs::path defeitos =
        diretorio / fmt::format("{}-com-defeitos-{}.txt", tipo.nome, opcoes.linhas);
    if (!fs::exists(limpo)) Gera(opcoes, tipo, false, opcoes.linhas, limpo);
    if (!fs::exists(defeitos)) Gera(opcoes, tipo, true, opcoes.linhas, defeitos);
    resultados.push_back(Mede(opcoes, tipo, limpo, opcoes.repeticoes, kContraMawk));
    // A clean file that leaves warnings would not take every check's full path.
    if (resultados.back().advertencias != 0) {
      throw std::runtime_error("o arquivo limpo " + limpo.string() + " deixou advertências");
    }
    resultados.push_back(Mede(opcoes, tipo, defeitos, opcoes.repeticoes, kContraMawk));
    eventos.push_back(MedeEventos(opcoes, tipo, limpo));
  }
  if (opcoes.gigabyte) {
    constexpr std::uint64_t kGiB = 1ull << 30;
    for (const Tipo& tipo : {kNotas, kFichas}) {
      const fs::path grande = diretorio / fmt::format("{}-1GiB.txt", tipo.nome);
      const std::uint64_t linhas = kGiB / static_cast<std::uint64_t>(tipo.largura + 2);
      if (!fs::exists(grande)) Gera(opcoes, tipo, false, linhas, grande);
      resultados.push_back(Mede(opcoes, tipo, grande, 1, kSozinho));
    }
    // One line of 1 GiB without a line break (a sparse file of zero bytes): the invoice run
    // refuses its length, the form run cannot read its record type.
    const fs::path linhaUnica = diretorio / "linha-unica-1GiB.txt";
    if (!fs::exists(linhaUnica)) {
      std::ofstream(linhaUnica, std::ios::binary).close();
      fs::resize_file(linhaUnica, kGiB);
    }
    for (const Tipo& tipo : {kNotas, kFichas}) {
      Resultado resultado = Mede(opcoes, tipo, linhaUnica, 1, kRecusavel);
      resultado.arquivo += fmt::format(" ({})", tipo.nome);
      resultados.push_back(resultado);
    }
  }

  std::vector<Lote> lotes;
  if (opcoes.lote) lotes = {MedeLote(opcoes, true), MedeLote(opcoes, false)};
  std::optional<MemoriaJson> memoriaJson;
  if (opcoes.advertencias) memoriaJson = MedeMemoriaJson(opcoes);

  fmt::print("Máquina: {}\nDiretório: {}\nRepetições: {} (medianas)\n\n", Maquina(),
             fs::absolute(diretorio).string(), opcoes.repeticoes);
  ImprimeTabela(resultados);
  fmt::print(
      "\n| eventos de progresso | sem ouvinte (s de CPU) | ouvinte em cada evento (s de CPU) | "
      "eventos | custo |\n|---|---:|---:|---:|---:|\n");
  for (const CustoEventos& custo : eventos) {
    fmt::print("| {} | {:.3f} | {:.3f} | {} | {:+.1f}% |\n", custo.tipo, custo.sem, custo.com,
               custo.eventos, custo.custo * 100);
  }
  if (!lotes.empty()) {
    fmt::print(
        "\n| lote | inscrições estaduais | arquivos | linhas cada | -j 1 (s) | -j 2 (s) | "
        "aceleração |\n|---|---|---:|---:|---:|---:|---:|\n");
  }
  for (const Lote& lote : lotes) {
    fmt::print("| notas | {} | {} | {} | {:.3f} | {:.3f} | {:.2f}x |\n", lote.registros,
               lote.arquivos, lote.linhas, lote.umaTarefa, lote.duasTarefas, lote.aceleracao);
  }
  if (memoriaJson) {
    fmt::print(
        "\n| JSON das advertências | entrada (MB) | ADVERTENCIAS.TXT (MB) | advertências | "
        "memória máx. (MiB) |\n|---|---:|---:|---:|---:|\n"
        "| notas --json (validação) | {:.1f} | {:.1f} | {} | {:.1f} |\n"
        "| advertencias notas --json | {:.1f} | {:.1f} | {} | {:.1f} |\n",
        static_cast<double>(memoriaJson->bytesEntrada) / 1e6,
        static_cast<double>(memoriaJson->bytesAdvertencias) / 1e6, memoriaJson->advertencias,
        MiB(memoriaJson->validacaoKiB), static_cast<double>(memoriaJson->bytesEntrada) / 1e6,
        static_cast<double>(memoriaJson->bytesAdvertencias) / 1e6, memoriaJson->advertencias,
        MiB(memoriaJson->listaKiB));
  }
  return 0;
}

int Mede(int argc, char** argv) {
  CLI::App app(
      "Mede a validação de arquivos inteiros pelo quorvvalida contra a leitura do arquivo por "
      "uma regra do mawk, e o custo dos eventos de progresso.",
      "quorvvalida-bancada");
  Opcoes opcoes;
  app.add_option("--programa", opcoes.programa, "o programa quorvvalida a medir")->required();
  app.add_option("--gerador", opcoes.gerador, "o programa quorvvalida-gerador")->required();
  app.add_option("--inscricao-lib", opcoes.inscricaoLib,
                 "biblioteca de inscrição estadual dada ao quorvvalida");
  app.add_option("--mawk", opcoes.mawk, "o mawk da varredura de referência");
  app.add_option("-d,--diretorio", opcoes.diretorio,
                 "onde ficam os arquivos gerados e os diretórios de trabalho");
  app.add_option("-n,--linhas", opcoes.linhas, "linhas de cada arquivo (padrão 1000000)");
  app.add_option("-r,--repeticoes", opcoes.repeticoes, "execuções de cada medida (padrão 5)")
      ->check(CLI::PositiveNumber);
  app.add_flag("--gigabyte", opcoes.gigabyte,
               "mede também arquivos de 1 GiB e uma linha única de 1 GiB");
  app.add_flag("--lote", opcoes.lote,
               "mede também 8 arquivos de 100000 linhas num lote, com -j 1 e com -j 2");
  app.add_flag("--advertencias", opcoes.advertencias,
               "mede também a memória do JSON das advertências do arquivo de notas com defeitos");
  CLI11_PARSE(app, argc, argv);
  return Executa(opcoes);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Mede(argc, argv);
  } catch (const std::exception& erro) {
    fmt::print(stderr, "quorvvalida-bancada: {}\n", erro.what());
    return 2;
  }
}
