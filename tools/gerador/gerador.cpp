// quorvvalida-gerador: writes invoice or registration-form files of the size asked for.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "argumentos.hpp"
#include "codigos_saida.hpp"
#include "linhas.hpp"

namespace {

using quorv::ferramenta::kAceito;
using quorv::ferramenta::kFalhaEntradaSaida;
using quorv::ferramenta::kUsoIncorreto;

constexpr std::uint64_t kMaisLinhas = 1000000000000;

int Falha(const std::string& mensagem, int codigo) {
  std::fprintf(stderr, "quorvvalida-gerador: %s\n", mensagem.c_str());
  return codigo;
}

int Executa(int argc, char** argv) {
  const std::vector<std::string> palavras(argv + 1, argv + argc);
  CLI::App app(
      "Escreve arquivos de notas fiscais de produtor ou de ficha cadastral para "
      "exemplos, medições e testes.",
      "quorvvalida-gerador");
  app.formatter(std::make_shared<quorv::ferramenta::FormatadorPortugues>(
      "Uso: quorvvalida-gerador notas|fichas [-n LINHAS] [--defeitos] [-o ARQUIVO]"));
  quorv::ferramenta::UsaMensagensEmPortugues(app, palavras);
  app.set_help_flag();
  bool ajuda = false;
  std::string tipo;
  std::string linhas = "1000000";
  bool defeitos = false;
  std::string saida;
  app.add_option("TIPO", tipo, "notas ou fichas")
      ->check(CLI::Validator(
          [](std::string& valor) -> std::string {
            if (valor == "notas" || valor == "fichas") return {};
            return "tipo inválido '" + valor + "'; use notas ou fichas";
          },
          "notas|fichas"));
  app.add_option("-n,--linhas", linhas, "quantas linhas, aproximadamente (padrão 1000000)")
      ->check(quorv::ferramenta::ValidadorInteiro(1, kMaisLinhas))
      ->option_text("LINHAS");
  app.add_flag("--defeitos", defeitos, "a maioria dos registros com vários defeitos");
  app.add_option("-o,--saida", saida, "arquivo a escrever (padrão: a saída padrão)")
      ->option_text("ARQUIVO");
  app.add_flag("-h,--help", ajuda, "mostra esta ajuda");
  app.footer("\nCódigos de saída: 0 arquivo escrito, 2 uso incorreto, 3 falha ao escrever.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& erro) {
    const std::string mensagem = quorv::ferramenta::MensagemDoErro(app, erro);
    return Falha(mensagem + "; veja 'quorvvalida-gerador --help'", kUsoIncorreto);
  }
  if (ajuda) {
    std::fputs(app.help().c_str(), stdout);
    return kAceito;
  }
  if (tipo.empty()) {
    return Falha("falta o TIPO (notas ou fichas); veja 'quorvvalida-gerador --help'",
                 kUsoIncorreto);
  }
  const std::uint64_t quantas = *quorv::ferramenta::InteiroEntre(linhas, 1, kMaisLinhas);

  std::FILE* arquivo = saida.empty() ? stdout : std::fopen(saida.c_str(), "wb");
  if (arquivo == nullptr) {
    return Falha("não foi possível criar o arquivo: " + saida, kFalhaEntradaSaida);
  }
  std::setvbuf(arquivo, nullptr, _IOFBF, 1 << 20);
  if (tipo == "notas") {
    quorv::gerador::GeraNotas(arquivo, quantas, defeitos);
  } else {
    quorv::gerador::GeraFichas(arquivo, quantas, defeitos);
  }
  bool falhou = std::fflush(arquivo) != 0 || std::ferror(arquivo) != 0;
  if (arquivo != stdout) falhou = std::fclose(arquivo) != 0 || falhou;
  if (falhou) {
    return Falha("falha ao escrever " + (saida.empty() ? std::string("na saída padrão") : saida) +
                     " (disco cheio ou erro de entrada e saída)",
                 kFalhaEntradaSaida);
  }
  return kAceito;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Executa(argc, argv);
  } catch (const std::exception& erro) {
    std::fprintf(stderr, "quorvvalida-gerador: erro interno: %s\n", erro.what());
    return quorv::ferramenta::kErroInterno;
  }
}
