-- A part of xfc_unsigned_product: a times some neighbouring bits of b. On level 0 these are two, a digit that chooses a
-- multiple of a; a part on a higher level adds two of the level below. Bit L of borders puts a register behind level L.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_unsigned_product_part is
  generic (a_bits  : positive;
           b_bits  : positive;   -- at most 2 ** (level + 1)
           level   : natural;
           borders : natural);
  port (sysclk, enable : in std_logic;
        a       : in std_logic_vector(a_bits - 1 downto 0);
        triple  : in std_logic_vector(a_bits + 1 downto 0);   -- 3 a
        b       : in std_logic_vector(b_bits - 1 downto 0);
        product : out std_logic_vector(a_bits + b_bits - 1 downto 0));
end xfc_unsigned_product_part;

architecture rtl of xfc_unsigned_product_part is
  constant half  : positive := 2 ** level;   -- bits of b in the lower of two parts
  constant zeros : std_logic_vector(a_bits + 1 downto 0) := (others => '0');
  signal product_d : std_logic_vector(a_bits + b_bits - 1 downto 0);
begin
  bit_alone : if level = 0 and b_bits = 1 generate
    product_d <= '0' & a when b(0) = '1' else zeros(a_bits downto 0);
  end generate;

  digit : if level = 0 and b_bits = 2 generate
    product_d <= triple when b(1) = '1' and b(0) = '1' else
                 '0' & a & '0' when b(1) = '1' else
                 "00" & a when b(0) = '1' else
                 zeros;
  end generate;

  low_alone : if level > 0 and b_bits <= half generate
    part : entity work.xfc_unsigned_product_part generic map (a_bits, b_bits, level - 1, borders)
      port map (sysclk, enable, a, triple, b, product_d);
  end generate;

  both : if level > 0 and b_bits > half generate
    signal low  : std_logic_vector(a_bits + half - 1 downto 0);
    signal high : std_logic_vector(a_bits + b_bits - half - 1 downto 0);
  begin
    low_part : entity work.xfc_unsigned_product_part generic map (a_bits, half, level - 1, borders)
      port map (sysclk, enable, a, triple, b(half - 1 downto 0), low);
    high_part : entity work.xfc_unsigned_product_part generic map (a_bits, b_bits - half, level - 1, borders)
      port map (sysclk, enable, a, triple, b(b_bits - 1 downto half), high);
    product_d <= std_logic_vector(unsigned(high) + unsigned(low(a_bits + half - 1 downto half)))
                 & low(half - 1 downto 0);
  end generate;

  behind : entity work.xfc_register generic map (a_bits + b_bits, (borders / 2 ** level) mod 2)
    port map (sysclk, enable, product_d, product);
end rtl;
