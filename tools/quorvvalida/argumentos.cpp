#include "argumentos.hpp"

#include <charconv>
#include <sstream>
#include <utility>

namespace quorv::ferramenta {
namespace {

// The option of the program or of any of its commands that answers to the name.
const CLI::Option* OpcaoDeNome(const CLI::App& app, const std::string& nome) {
  for (const CLI::Option* opcao : app.get_options()) {
    if (opcao->check_name(nome)) return opcao;
  }
  for (const CLI::App* comando : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (const CLI::Option* opcao = OpcaoDeNome(*comando, nome)) return opcao;
  }
  return nullptr;
}

// "--opcao" of "--opcao=valor"; the word itself when it has no value.
std::string NomeDaPalavra(const std::string& palavra) {
  return palavra.substr(0, palavra.find('='));
}

}  // namespace

FormatadorPortugues::FormatadorPortugues(std::string uso) : uso_(std::move(uso)) {
  label("Usage", "Uso");
  label("OPTIONS", "opções");
  label("SUBCOMMAND", "COMANDO");
  label("SUBCOMMANDS", "COMANDOS");
  label("Positionals", "Argumentos");
  label("REQUIRED", "(obrigatório)");
  label("TEXT", "TEXTO");
  label("Needs", "Exige");
  label("Excludes", "Exclui");
  column_width(32);
}

std::string FormatadorPortugues::make_usage(const CLI::App* app, std::string name) const {
  if (uso_.empty()) return CLI::Formatter::make_usage(app, std::move(name));
  return uso_ + "\n";
}

std::string FormatadorPortugues::make_option_desc(const CLI::Option* opcao) const {
  return Quebra(opcao->get_description(), kLargura - get_column_width());
}

std::string Quebra(const std::string& texto, std::size_t largura) {
  // Characters, not bytes: a byte that continues a UTF-8 character takes no column.
  const auto colunas = [](const std::string& parte) {
    std::size_t total = 0;
    for (const char c : parte)
      total += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return total;
  };
  std::string resultado;
  std::size_t linha = 0;
  std::istringstream palavras(texto);
  std::string palavra;
  while (palavras >> palavra) {
    const std::size_t tamanho = colunas(palavra);
    if (linha > 0 && linha + 1 + tamanho > largura) {
      resultado += '\n';
      linha = 0;
    } else if (linha > 0) {
      resultado += ' ';
      ++linha;
    }
    resultado += palavra;
    linha += tamanho;
  }
  return resultado;
}

std::string MensagemDeUso(const CLI::App& app, const CLI::Error& erro,
                          const std::vector<std::string>& argumentos) {
  // The kind of error by its class: its name field holds other things for some of them.
  if (dynamic_cast<const CLI::ExtrasError*>(&erro) != nullptr) {
    const std::vector<std::string> sobras = app.remaining(true);
    const std::string primeira = sobras.empty() ? std::string() : sobras.front();
    if (!primeira.empty() && primeira.front() == '-' && primeira != "-") {
      return "opção desconhecida: " + NomeDaPalavra(primeira);
    }
    return "argumento não esperado: " + primeira;
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&erro) != nullptr) {
    // The parser takes the next word as an option's value whatever it looks like, so a value
    // is missing only when the option is the last word.
    if (!argumentos.empty() && OpcaoDeNome(app, argumentos.back()) != nullptr) {
      return "falta o valor da opção " + argumentos.back();
    }
    return "uma opção não recebeu o valor que espera";
  }
  if (dynamic_cast<const CLI::ValidationError*>(&erro) != nullptr) {
    // The validators of this tool write their own Portuguese; the parser puts the option's name
    // before it.
    return erro.what();
  }
  if (dynamic_cast<const CLI::ConversionError*>(&erro) != nullptr) {
    // A switch given a value ("--json=sim"): the only option that the parser converts itself.
    for (const std::string& palavra : argumentos) {
      const std::size_t igual = palavra.find('=');
      if (igual == std::string::npos) continue;
      const CLI::Option* opcao = OpcaoDeNome(app, palavra.substr(0, igual));
      if (opcao != nullptr && opcao->get_expected_max() == 0) {
        return "a opção " + palavra.substr(0, igual) + " não leva valor: " + palavra;
      }
    }
    return "valor inválido numa opção";
  }
  if (dynamic_cast<const CLI::RequiredError*>(&erro) != nullptr) {
    for (const CLI::Option* opcao : app.get_options()) {
      if (opcao->get_required() && opcao->count() == 0) return "falta " + opcao->get_name();
    }
    return "falta um argumento obrigatório";
  }
  return "uso incorreto da linha de comando";
}

std::string MensagemDoErro(const CLI::App& app, const CLI::ParseError& erro) {
  std::ostringstream saida;
  std::ostringstream erros;
  app.exit(erro, saida, erros);
  std::string mensagem = erros.str();
  while (!mensagem.empty() && mensagem.back() == '\n')
    mensagem.pop_back();
  return mensagem;
}

void UsaMensagensEmPortugues(CLI::App& app, const std::vector<std::string>& argumentos) {
  app.failure_message([argumentos](const CLI::App* comando, const CLI::Error& erro) {
    // The hook may be called on a command: the message is built from the whole program.
    const CLI::App* programa = comando;
    while (programa->get_parent() != nullptr)
      programa = programa->get_parent();
    return MensagemDeUso(*programa, erro, argumentos);
  });
}

std::optional<std::uint64_t> InteiroEntre(const std::string& texto, std::uint64_t minimo,
                                          std::uint64_t maximo) {
  if (texto.empty() || texto.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  std::uint64_t valor = 0;
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  if (erro != std::errc() || fim != texto.data() + texto.size()) return std::nullopt;
  if (valor < minimo || valor > maximo) return std::nullopt;
  return valor;
}

CLI::Validator ValidadorInteiro(std::uint64_t minimo, std::uint64_t maximo) {
  return CLI::Validator(
      [minimo, maximo](std::string& texto) -> std::string {
        if (InteiroEntre(texto, minimo, maximo)) return {};
        std::ostringstream mensagem;
        mensagem << "valor inválido '" << texto << "'; use um número inteiro de " << minimo << " a "
                 << maximo;
        return mensagem.str();
      },
      "INTEIRO");
}

}  // namespace quorv::ferramenta
