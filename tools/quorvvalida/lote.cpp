// The validating commands over one file or many: each file in its own working directory, on as
// many threads as asked, the outcomes told in the order the files were given.
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include <fmt/format.h>

#include "advertencias_arquivo.hpp"
#include "codigos_saida.hpp"
#include "comandos.hpp"
#include "entrada_padrao.hpp"
#include "progresso.hpp"
#include "quorvvalida/quorvvalida.hpp"

namespace quorv::ferramenta {
namespace {

namespace fs = std::filesystem;

// One file of the command.
struct Entrada {
  std::string mostrado;   // as the user gave it ("-" for standard input)
  std::string caminho;    // what the library opens
  std::string diretorio;  // its working directory
  std::optional<Tipo> tipo;
  std::uint64_t tamanho = 0;
};

// What one file came to: a validation, or a failure before it could run.
struct Desfecho {
  std::optional<ResultadoValidacao> validacao;
  std::optional<Erro> erro;
  int codigo = 0;
};

// The files of a directory and of all its subdirectories, in the order of their paths.
std::vector<std::string> ArquivosDe(const std::string& pasta) {
  std::vector<std::string> arquivos;
  std::error_code erro;
  for (fs::recursive_directory_iterator it(fs::u8path(pasta), erro), fim; !erro && it != fim;
       it.increment(erro)) {
    if (it->is_regular_file(erro)) arquivos.push_back(it->path().u8string());
  }
  std::sort(arquivos.begin(), arquivos.end());
  return arquivos;
}

// The working directory of the file at `indice` of a batch: a subfolder of the one given, named
// by the file's place in the batch and its name, so that two files of the same name never meet.
std::string SubpastaDe(const std::string& diretorio, std::size_t indice, std::size_t total,
                       const std::string& mostrado) {
  const std::string base =
      mostrado == "-" ? std::string("entrada-padrao") : fs::u8path(mostrado).filename().u8string();
  const int algarismos = static_cast<int>(fmt::format("{}", total).size());
  return (fs::u8path(diretorio) / fs::u8path(fmt::format("{:0{}}-{}", indice + 1, algarismos,
                                                         base.empty() ? "arquivo" : base)))
      .u8string();
}

Desfecho Falhou(const std::string& tipo, const std::string& mensagem, int codigo) {
  Desfecho desfecho;
  desfecho.erro = Erro{tipo, mensagem};
  desfecho.codigo = codigo;
  return desfecho;
}

// Invoices are checked against the home state's registrations; tell once when nothing can
// check them. A notice about the environment: never hidden.
void AvisaSemInscricao(const std::vector<Entrada>& entradas, Relator& relator) {
  const bool temNotas = std::any_of(entradas.begin(), entradas.end(), [](const Entrada& entrada) {
    return entrada.tipo == Tipo::kNotas;
  });
  if (!temNotas || VerificadorInscricaoDisponivel()) return;
  relator.Nota(kSemInscricao);
}

}  // namespace

int ValidaArquivos(std::optional<Tipo> tipo, const OpcoesValidacao& opcoes, const OpcoesLote& lote,
                   Relator& relator) {
  const OpcoesGerais& gerais = relator.Gerais();
  std::vector<Entrada> entradas;
  for (const std::string& arquivo : lote.arquivos) {
    std::error_code erro;
    if (arquivo != "-" && lote.recursivo && fs::is_directory(fs::u8path(arquivo), erro)) {
      for (const std::string& dentro : ArquivosDe(arquivo))
        entradas.push_back({dentro, dentro, {}, {}, 0});
    } else {
      entradas.push_back({arquivo, arquivo, {}, {}, 0});
    }
  }
  if (entradas.empty()) {
    return relator.Falha({"entrada_inacessivel", fmt::format("nenhum arquivo encontrado em {}",
                                                             fmt::join(lote.arquivos, ", "))},
                         kFalhaEntradaSaida);
  }
  const bool emLote = lote.arquivos.size() > 1 || lote.recursivo;
  std::error_code erro;
  if (emLote && !fs::is_directory(fs::u8path(opcoes.diretorio), erro)) {
    return relator.Falha(
        {"diretorio_inexistente", "diretório de trabalho não encontrado: " + opcoes.diretorio},
        kFalhaEntradaSaida);
  }

  BarraDeProgresso barra(!gerais.quieto);
  std::vector<Desfecho> desfechos(entradas.size());
  std::vector<bool> prontos(entradas.size(), false);
  std::optional<EntradaPadrao> padrao;
  for (std::size_t i = 0; i < entradas.size(); ++i) {
    Entrada& entrada = entradas[i];
    entrada.diretorio = opcoes.diretorio;
    if (emLote) {
      entrada.diretorio = SubpastaDe(opcoes.diretorio, i, entradas.size(), entrada.mostrado);
      fs::create_directories(fs::u8path(entrada.diretorio), erro);
    }
    if (entrada.mostrado == "-") {
      std::string motivo;
      padrao.emplace();
      if (!padrao->Recebe(entrada.diretorio, barra, motivo)) {
        desfechos[i] = Falhou("entrada_padrao", motivo, kFalhaEntradaSaida);
        prontos[i] = true;
        continue;
      }
      entrada.caminho = padrao->Caminho();
    }
    entrada.tipo = tipo;
    if (!tipo) {
      const Identificacao identificacao = IdentificaTipo(entrada.caminho);
      if (!identificacao.aberto) {
        desfechos[i] =
            Falhou("entrada_inacessivel", MotivoDaEntrada(entrada.mostrado), kFalhaEntradaSaida);
        prontos[i] = true;
        continue;
      }
      if (!identificacao.identificado) {
        desfechos[i] = Falhou(
            "tipo_nao_identificado",
            fmt::format("não foi possível identificar o tipo do arquivo {}: a primeira linha tem "
                        "{} caracteres, e são esperados 160 (notas fiscais de produtor) ou 260 "
                        "(ficha cadastral); use 'quorvvalida notas' ou 'quorvvalida fichas' para "
                        "escolher",
                        entrada.mostrado, identificacao.comprimento),
            kUsoIncorreto);
        prontos[i] = true;
        continue;
      }
      entrada.tipo = identificacao.tipo;
    }
    entrada.tamanho = fs::file_size(fs::u8path(entrada.caminho), erro);
    if (erro) entrada.tamanho = 0;
  }
  AvisaSemInscricao(entradas, relator);

  std::vector<Tipo> tipos;
  std::vector<std::uint64_t> tamanhos;
  for (const Entrada& entrada : entradas) {
    tipos.push_back(entrada.tipo.value_or(Tipo::kNotas));
    tamanhos.push_back(entrada.tamanho);
  }
  barra.Inicia(tipos, tamanhos);

  std::mutex trava;
  std::condition_variable pronto;
  std::atomic<std::size_t> proximo{0};
  const auto trabalha = [&] {
    for (std::size_t i = proximo++; i < entradas.size(); i = proximo++) {
      {
        std::lock_guard<std::mutex> guarda(trava);
        if (prontos[i]) continue;
      }
      const Entrada& entrada = entradas[i];
      Desfecho desfecho;
      try {
        desfecho.validacao =
            ValidaUm(entrada.mostrado, entrada.caminho, *entrada.tipo, entrada.diretorio, opcoes,
                     gerais, [&barra, i](double& porcentagem) { barra.Atualiza(i, porcentagem); });
        desfecho.codigo = desfecho.validacao->codigoSaida;
      } catch (const std::exception& falha) {
        desfecho = Falhou("interno", std::string("erro interno: ") + falha.what(), kErroInterno);
      }
      barra.Conclui(i);
      std::lock_guard<std::mutex> guarda(trava);
      desfechos[i] = std::move(desfecho);
      prontos[i] = true;
      pronto.notify_all();
    }
  };
  std::vector<std::thread> trabalhadores;
  const std::size_t quantas = emLote ? std::min<std::size_t>(lote.tarefas, entradas.size()) : 0;
  for (std::size_t t = 0; t < quantas; ++t)
    trabalhadores.emplace_back(trabalha);
  // A single file runs on this thread, as a host's call would.
  if (quantas == 0) trabalha();

  ResumoLote resumo;
  int codigo = kAceito;
  for (std::size_t i = 0; i < entradas.size(); ++i) {
    Desfecho desfecho;
    {
      std::unique_lock<std::mutex> guarda(trava);
      pronto.wait(guarda, [&] { return static_cast<bool>(prontos[i]); });
      desfecho = std::move(desfechos[i]);
    }
    barra.Encerra();
    if (emLote && i > 0 && !gerais.json && !gerais.quieto) std::fputc('\n', stdout);
    if (desfecho.validacao) {
      relator.Validacao(*desfecho.validacao);
      if (emLote && !desfecho.validacao->caminhoAdvertencias.empty()) {
        resumo.totalAdvertencias += ContaLinhas(desfecho.validacao->caminhoAdvertencias);
      }
    } else {
      relator.Falha(*desfecho.erro, desfecho.codigo, entradas[i].mostrado);
    }
    ++resumo.arquivos;
    if (desfecho.codigo == kAceito) {
      ++resumo.aceitos;
    } else if (desfecho.codigo == kComAdvertencias) {
      ++resumo.comAdvertencias;
    } else {
      ++resumo.comFalha;
    }
    codigo = PiorCodigo(codigo, desfecho.codigo);
  }
  for (std::thread& trabalhador : trabalhadores)
    trabalhador.join();
  barra.Encerra();
  if (emLote) {
    resumo.codigoSaida = codigo;
    relator.Lote(resumo);
  }
  return codigo;
}

}  // namespace quorv::ferramenta
