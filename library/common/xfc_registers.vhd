-- Registers behind each other: q is d of so many cycles ago, counted in cycles with enable. Made of xfc_register alone.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_registers is
  generic (width : positive;   -- bits
           count : natural);   -- cycles
  port (sysclk, enable : in std_logic;
        d : in std_logic_vector(width - 1 downto 0);
        q : out std_logic_vector(width - 1 downto 0));
end xfc_registers;

architecture rtl of xfc_registers is
  signal chain : std_logic_vector(width * (count + 1) - 1 downto 0);
begin
  chain(width - 1 downto 0) <= d;
  each : for i in 0 to count - 1 generate
    stage : entity work.xfc_register generic map (width, 1)
      port map (sysclk, enable, chain(width * (i + 1) - 1 downto width * i),
                chain(width * (i + 2) - 1 downto width * (i + 1)));
  end generate;
  q <= chain(width * (count + 1) - 1 downto width * count);
end rtl;
