-- Square root of an IEEE double, correctly rounded to nearest; for which operands and by which steps is said at
-- xfc_square_root, which it consists of.
-- Latency 57 cycles.
library ieee;
use ieee.std_logic_1164.all;

entity dp_sqr is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(11 downto 1);
        mantissain : in std_logic_vector(52 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_sqr;

architecture rtl of dp_sqr is
  constant exponent_bits : positive := 11;
  constant fraction_bits : positive := 52;
  signal root : std_logic_vector(exponent_bits + fraction_bits downto 0);
begin
  square_root : entity work.xfc_square_root generic map (exponent_bits, fraction_bits)
    port map (sysclk, enable, signin, exponentin, mantissain, root);
  signout <= root(exponent_bits + fraction_bits);
  exponentout <= root(exponent_bits + fraction_bits - 1 downto fraction_bits);
  mantissaout <= root(fraction_bits - 1 downto 0);
end rtl;
